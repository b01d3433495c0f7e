#include "messaging/forms/LogMessageForm.h"

#include "contacts/Client.h"
#include "engine/Jid.h"
#include "messaging/ConversationLog.h"
#include "settings/Paths.h"
#include "ui_LogMessageForm.h"

#include <QPointer>
#include <QSaveFile>
#include <QShortcut>

namespace
{

void appendRichText(QByteArray& out, QChar c)
{
    if (c == u'\n') {
        out += "\\par\r\n";
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

// `text` as a document of the Rich Text Format, pure ASCII. Lines end with a line feed.
QByteArray richText(const QString& text)
{
    QByteArray out("{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss Verdana;}}\\f0\\fs17\r\n");
    out.reserve(text.size() + 64);
    for (const QChar c : text)
        appendRichText(out, c);
    return out + "}\r\n";
}

} // namespace

LogMessageForm::LogMessageForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("LogMessageForm")), ui_(std::make_unique<Ui::LogMessageForm>()),
      client_(client)
{
    ui_->setupUi(this);
    connect(ui_->txtLog, &TranscriptView::menuRequested, this,
            [this](const QPoint& at) { ui_->mnuEdit->popup(at); });
    connect(ui_->txtLog, &TranscriptView::linkPressed, this,
            [this](const QString& target) { client_.desktop.links->open(target); });
    auto* escape = new QShortcut(Qt::Key_Escape, this);
    connect(escape, &QShortcut::activated, this, &QWidget::close);
    connect(ui_->mnuEditCopy, &QAction::triggered, ui_->txtLog, &QPlainTextEdit::copy);
    connect(ui_->mnuEditSave, &QAction::triggered, this, &LogMessageForm::mnuEditSave_Click);
}

LogMessageForm::~LogMessageForm() = default;

void LogMessageForm::ShowMessageLog(const ConversationLog& log, const QString& peer)
{
    QString error;
    const auto text = log.read(peer, &error);
    setWindowTitle(jid::bare(peer) + tr(" -- Message Log"));
    if (!error.isEmpty())
        ui_->txtLog->appendLine({{TranscriptRun::Style::Plain, error}});
    else if (!text)
        ui_->txtLog->appendText(tr("< no previous message >"), false);
    else
        fill(*text);
    show();
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

QString LogMessageForm::save(const QString& path) const
{
    const QByteArray text = richText(ui_->txtLog->transcriptText());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return {};
    return tr("The file \"%1\" could not be saved: %2").arg(path, file.errorString());
}
