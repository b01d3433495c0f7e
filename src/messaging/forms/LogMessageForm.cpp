#include "messaging/forms/LogMessageForm.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "messaging/ConversationLog.h"
#include "settings/Paths.h"
#include "ui_LogMessageForm.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QSaveFile>
#include <QShortcut>

namespace
{

void appendRichText(QByteArray& out, QChar c)
{
    if (c == u'\n') {
        out += "\\par\r\n";
    } else if (c == u'\r') {
        // goes with the line feed
    } else if (c == u'\\' || c == u'{' || c == u'}') {
        out += '\\';
        out += c.toLatin1();
    } else if (c == u'\t') {
        out += "\\tab ";
    } else if (c.unicode() >= 0x20 && c.unicode() < 0x7F) {
        out += c.toLatin1();
    } else {
        // A UTF-16 unit as a signed number, with "?" for readers that don't know it.
        out += "\\u" + QByteArray::number(static_cast<qint16>(c.unicode())) + '?';
    }
}

QByteArray richText(const QString& text)
{
    QByteArray out;
    out.reserve(text.size() + 64);
    for (const QChar c : text)
        appendRichText(out, c);
    return out;
}

} // namespace

LogMessageForm::LogMessageForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("LogMessageForm")), ui_(std::make_unique<Ui::LogMessageForm>()),
      client_(client)
{
    ui_->setupUi(this);
    ui_->pages->hide();
    ui_->txtLog->keepAll(); // a page is bounded
    connect(ui_->txtLog, &TranscriptView::menuRequested, this,
            [this](const QPoint& at) { ui_->mnuEdit->popup(at); });
    connect(ui_->txtLog, &TranscriptView::linkPressed, this,
            [this](const QString& target) { client_.desktop.links->open(target); });
    auto* escape = new QShortcut(Qt::Key_Escape, this);
    connect(escape, &QShortcut::activated, this, &QWidget::close);
    connect(ui_->mnuEditCopy, &QAction::triggered, this, [this] {
        QGuiApplication::clipboard()->clear(); // also where nothing is selected
        ui_->txtLog->copy();
    });
    connect(ui_->cmdEarlier, &QPushButton::clicked, this, [this] { turn(&LogPages::earlier); });
    connect(ui_->cmdLater, &QPushButton::clicked, this, [this] { turn(&LogPages::later); });
    connect(ui_->mnuEditSave, &QAction::triggered, this, &LogMessageForm::mnuEditSave_Click);
}

LogMessageForm::~LogMessageForm() = default;

void LogMessageForm::ShowMessageLog(const ConversationLog& log, const QString& peer)
{
    setWindowTitle(jid::bare(peer) + tr(" -- Message Log"));
    pages_.emplace(log.path(peer));
    if (pages_->exists())
        turn(&LogPages::last);
    else
        ui_->txtLog->appendText(tr("< no previous message >"), false);
    ui_->pages->setVisible(pages_->hasEarlier());
    show();
}

void LogMessageForm::turn(Page page)
{
    QString error;
    const QString text = (*pages_.*page)(&error);
    ui_->txtLog->clearTranscript();
    fill(text);
    if (!error.isEmpty())
        ui_->txtLog->appendLine({{TranscriptRun::Style::Plain, error}});
    // One reads on where the page before it ended.
    if (page == &LogPages::later)
        ui_->txtLog->moveCursor(QTextCursor::Start);
    else
        ui_->txtLog->scrollToEnd();
    ui_->cmdEarlier->setEnabled(pages_->hasEarlier());
    ui_->cmdLater->setEnabled(pages_->hasLater());
}

void LogMessageForm::fill(const QString& log)
{
    qsizetype start = 0;
    while (start < log.size()) {
        auto end = log.indexOf(u'\n', start);
        if (end < 0)
            end = log.size();
        const auto length = end > start && log.at(end - 1) == u'\r' ? end - start - 1 : end - start;
        const QString line = log.mid(start, length);
        ui_->txtLog->appendText(line + u'\n', ConversationLog::isHeaderLine(line));
        start = end + 1;
    }
}

void LogMessageForm::mnuEditSave_Click()
{
    const QPointer<LogMessageForm> self(this);
    const auto path =
        client_.desktop.boxes->input(tr("Brelo Instant Messenger"), tr("Add the complete file path:"),
                                     paths::applicationFolder() + QStringLiteral("/MessageLog.rtf"));
    if (!self || !path || path->isEmpty())
        return;
    const QString error = save(*path);
    if (!error.isEmpty())
        client_.desktop.boxes->exclamation(tr("Error"), error);
}

// The whole log as a document of the Rich Text Format, pure ASCII, whatever page is in view.
QString LogMessageForm::save(const QString& path) const
{
    QSaveFile file(path);
    QString error;
    bool written = file.open(QIODevice::WriteOnly) &&
                   file.write("{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss Verdana;}}\\f0\\fs17\r\n") > 0;
    LogPages log = *pages_;
    for (log.rewind(); written && error.isEmpty() && log.hasLater();)
        written = file.write(richText(log.later(&error))) >= 0;
    if (!error.isEmpty())
        return error;
    if (written && file.write("}\r\n") > 0 && file.commit())
        return {};
    return tr("The file \"%1\" could not be saved: %2").arg(path, file.errorString());
}
