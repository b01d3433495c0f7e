#include "plugins/keychain/QtKeychainStore.h"

#include <QEventLoop>
#include <QTimer>

#include <memory>
#include <qt6keychain/keychain.h>

namespace
{

const QString service = QStringLiteral("BreloIM");
constexpr int patienceMs = 10000;

} // namespace

bool QtKeychainStore::run(QKeychain::Job* job)
{
    // A job that is late still runs to its end and deletes itself: its library calls back into it.
    QEventLoop loop;
    QObject::connect(job, &QKeychain::Job::finished, &loop, [&loop] { loop.exit(0); });
    QTimer::singleShot(patienceMs, &loop, [&loop] { loop.exit(1); });
    job->start();
    silent_ = loop.exec(QEventLoop::ExcludeUserInputEvents) != 0;
    return !silent_;
}

std::optional<QString> QtKeychainStore::read(const QString& account)
{
    if (silent_)
        return std::nullopt;
    struct Answer {
        QKeychain::Error error = QKeychain::OtherError;
        QString text;
    };
    const auto answer = std::make_shared<Answer>();
    auto* job = new QKeychain::ReadPasswordJob(service);
    job->setKey(account);
    QObject::connect(job, &QKeychain::Job::finished, job, [answer, job] {
        *answer = {job->error(), job->textData()};
    });
    if (!run(job))
        return std::nullopt;
    if (answer->error == QKeychain::EntryNotFound)
        return QString();
    return answer->error == QKeychain::NoError ? std::optional(answer->text) : std::nullopt;
}

bool QtKeychainStore::write(const QString& account, const QString& password)
{
    if (silent_)
        return false;
    const auto error = std::make_shared<QKeychain::Error>(QKeychain::OtherError);
    auto* job = new QKeychain::WritePasswordJob(service);
    job->setKey(account);
    job->setTextData(password);
    QObject::connect(job, &QKeychain::Job::finished, job, [error, job] { *error = job->error(); });
    return run(job) && *error == QKeychain::NoError;
}

extern "C" Q_DECL_EXPORT void* breloMake()
{
    return static_cast<SecretStore*>(new QtKeychainStore);
}
