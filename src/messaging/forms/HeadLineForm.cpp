#include "messaging/forms/HeadLineForm.h"

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "engine/StanzaError.h"
#include "engine/Xml.h"
#include "messaging/WindowTag.h"
#include "messaging/forms/PutAway.h"
#include "ui_HeadLineForm.h"

#include <QMenu>

namespace
{

constexpr qsizetype mostErrors = 10; // told of one stanza

// Of an error without words the number is told in words.
QStringList errorTexts(const Stanza& stanza)
{
    QStringList texts;
    const auto errors = stanza.root().select_nodes(".//*[local-name()='error']");
    const QString sentence = errors.empty() ? QString() : StanzaError::of(stanza.root()).sentence();
    for (const auto found : errors) {
        if (texts.size() == mostErrors)
            break;
        const QString text = xml::text(found.node());
        texts += text.trimmed().isEmpty() ? sentence : text;
    }
    return texts;
}

} // namespace

HeadLineForm::HeadLineForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("HeadLineForm")), ui_(std::make_unique<Ui::HeadLineForm>()),
      client_(client), stamps_(*client.desktop.clock)
{
    ui_->setupUi(this);
    // A notice must not take the keys that the person types elsewhere.
    setAttribute(Qt::WA_ShowWithoutActivating);
    setCancelButton(ui_->cmdClose);
    connect(ui_->cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(ui_->Command1, &QPushButton::clicked, this, &HeadLineForm::Command1_Click);
    connect(ui_->txtMsg, &TranscriptView::linkPressed, this,
            [this](const QString& target) { client_.desktop.links->open(target); });
    connect(ui_->txtMsg, &TranscriptView::menuRequested, this, [this](const QPoint& at) {
        auto* menu = ui_->txtMsg->createStandardContextMenu();
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(at);
    });
}

HeadLineForm::~HeadLineForm() = default;

void HeadLineForm::WriteMessage(const QString& from, const QString& body, const QString& subject)
{
    using Style = TranscriptRun::Style;
    ui_->txtMsg->appendLine(
        {{Style::Stamp, QStringLiteral(" <") + stamps_.shortTime() + QStringLiteral("> ")},
         {Style::NoticeSender, u' ' + from + QStringLiteral(": ")},
         {Style::Plain, subject + QStringLiteral(" - ")},
         {Style::Body, body}});
}

int HeadLineForm::GetLeftProp(const Form& form)
{
    return windowtag::left(form.Tag);
}
int HeadLineForm::GetTopProp(const Form& form)
{
    return windowtag::top(form.Tag);
}

void HeadLineForm::showAtPlace()
{
    if (isVisible())
        return;
    setPlace(QPoint(GetLeftProp(*this), GetTopProp(*this)) / windowtag::twipsPerPixel);
    show();
}

void HeadLineForm::OnMessage(PlugInContext& context)
{
    const auto fields = context.Stanza().MessageFields();
    if (fields.Type() != u"error")
        return WriteMessage(fields.From(), fields.Body(), fields.Subject());
    for (const auto& text : errorTexts(context.Stanza()))
        WriteMessage(fields.From(), text, fields.Type());
}

void HeadLineForm::OnPresence(PlugInContext& context)
{
    const auto fields = context.Stanza().PresenceFields();
    if (fields.From().isEmpty())
        return emit connectionLost();
    for (const auto& text : errorTexts(context.Stanza())) {
        showAtPlace();
        WriteMessage(fields.From(), text, fields.Type());
    }
}

void HeadLineForm::Command1_Click()
{
    ui_->txtMsg->clearTranscript();
}

bool HeadLineForm::queryUnload(CloseMode)
{
    if (client_.SessionClosing)
        return true;
    putAway(*this);
    if (auto* main = registry().find(QStringLiteral("RosterForm")))
        main->activateWindow();
    return false;
}
