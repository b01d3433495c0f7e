#include "session/OneProgram.h"

#include "settings/Paths.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QThread>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

// In the person's own runtime folder, whose path is short enough for a socket's.
QByteArray socketOf(const QString& settingsFile)
{
    const auto profile = QFileInfo(settingsFile).absoluteFilePath().toUtf8();
    const auto name = QCryptographicHash::hash(profile, QCryptographicHash::Sha1).toHex().left(16);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return QFile::encodeName(folder) + "/breloim-" + name;
}

// Calls bind() or connect() on a new socket; -1 when that failed.
template <typename Call>
int makeSocket(const QByteArray& path, Call call)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= qsizetype(sizeof address.sun_path))
        return -1;
    std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
    const int made = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (made >= 0 && call(made, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return made;
    if (made >= 0)
        ::close(made);
    return -1;
}

} // namespace

OneProgram::OneProgram(const QString& settingsFile) : socketPath_(socketOf(settingsFile))
{
    const QFileInfo settings(settingsFile);
    paths::makePrivateFolder(settings.absolutePath());
    first_ = lock(settings.absolutePath() + QStringLiteral("/BreloIM.lock"));
    if (first_)
        listen();
}

OneProgram::~OneProgram()
{
    notifier_.reset();
    if (listening_ >= 0) {
        ::unlink(socketPath_.constData());
        ::close(listening_);
    }
    if (lock_ >= 0)
        ::close(lock_);
}

// False only when another program holds the lock.
bool OneProgram::lock(const QString& file)
{
    lock_ = ::open(QFile::encodeName(file).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    return lock_ < 0 || ::flock(lock_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

void OneProgram::listen()
{
    // What a killed program left.
    ::unlink(socketPath_.constData());
    listening_ = makeSocket(socketPath_, [](int made, const sockaddr* address, socklen_t size) {
        return ::bind(made, address, size) == 0 && ::listen(made, 4) == 0 ? 0 : -1;
    });
    if (listening_ < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(listening_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        const int caller = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC);
        if (caller < 0)
            return;
        ::close(caller); // which is the answer
        emit summoned();
    });
}

// The first may be on its way up: it has the lock a moment before it listens, and listens a moment before it
// answers. The system takes a call for it even when it hangs.
bool OneProgram::summonFirst(int patienceMs) const
{
    QDeadlineTimer patience(patienceMs);
    while (!patience.hasExpired()) {
        const int call = makeSocket(socketPath_, &::connect);
        pollfd answer{call, POLLIN, 0};
        const bool answered = call >= 0 && ::poll(&answer, 1, int(patience.remainingTime())) > 0;
        if (call >= 0)
            ::close(call);
        if (answered)
            return true;
        QThread::msleep(50);
    }
    return false;
}
