#include "services/forms/VCardForm.h"

#include "contacts/Client.h"
#include "engine/StanzaError.h"
#include "messaging/LongLines.h"
#include "services/forms/RequiredMark.h"
#include "ui_VCardForm.h"

VCardForm::VCardForm(FormRegistry& registry, Client& client)
    : SessionForm(registry, QStringLiteral("VCardForm")), ui_(std::make_unique<Ui::VCardForm>()),
      client_(client)
{
    ui_->setupUi(this);
    ui_->lblState->hide();
    ui_->name1->setFocus();
    connect(ui_->Command1, &QPushButton::clicked, this, &VCardForm::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &VCardForm::Command2_Click);
    connect(ui_->Command3, &QPushButton::clicked, this, &VCardForm::Command3_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &VCardForm::cmdOK_Click);
    for (auto* link : {ui_->Label5, ui_->Label7})
        link->setRestingColour(palette().color(QPalette::Link));
    connect(ui_->Label5, &LinkLabel::activated, this, &VCardForm::Label5_Click);
    connect(ui_->Label7, &LinkLabel::activated, this, &VCardForm::Label7_Click);
    connect(ui_->email, &QLineEdit::textChanged, this, &VCardForm::showLinks);
    connect(ui_->persurl, &QLineEdit::textChanged, this, &VCardForm::showLinks);
    showLinks();
}

VCardForm::~VCardForm() = default;

void VCardForm::setPeer(const QString& bareJid)
{
    Tag = bareJid;
    ui_->lblPeer->setText(bareJid);
    ui_->lblPeer->setToolTip(bareJid.toHtmlEscaped()); // which may be markup
    ui_->lblPeer->setAccessibleDescription(bareJid);
}

void VCardForm::WriteVCard(const PlugInContext& context)
{
    const auto& stanza = context.Stanza();
    if (stanza.IqFields().Type() == u"error")
        return showState(tr("The card could not be read: %1").arg(StanzaError::of(stanza.root()).sentence()));
    const auto read = VCard::of(stanza);
    // The own card is saved again, and stays whole.
    const bool own = Tag == client_.ownBareJid();
    VCard::forEachField(read, [this, own](const QString& control, const QString& value) {
        auto* edit = field(control);
        edit->setText(own ? value : longlines::shownLine(value));
        edit->setCursorPosition(0);
    });
    showState(read == VCard() ? tr("This card is empty.") : QString());
}

void VCardForm::present()
{
    if (!isVisible())
        setOwn(Tag == client_.ownBareJid());
    bringUp();
}

void VCardForm::setOwn(bool own)
{
    ui_->Command1->setVisible(own);
    ui_->Command3->setVisible(own);
    ui_->cmdOK->setVisible(own);
    ui_->Command2->setVisible(!own);
    ui_->lblNote->setVisible(own);
    setDefaultButton(own ? ui_->cmdOK : ui_->Command2);
    setCancelButton(own ? ui_->Command1 : ui_->Command2);
    const VCard all;
    VCard::forEachField(all, [this, own](const QString& control, const QString&) {
        field(control)->setReadOnly(!own);
        field(control)->setFrame(own);
    });
    // Nothing is required of a card that can only be read.
    ui_->lblFormat->setVisible(own);
    for (auto* label : {ui_->lblname1, ui_->lblsurname, ui_->lblnick, ui_->lblemail}) {
        auto font = label->font();
        font.setBold(own);
        label->setFont(font);
    }
}

void VCardForm::Command1_Click()
{
    requestUnload(CloseMode::Code);
}

void VCardForm::Command2_Click()
{
    requestUnload(CloseMode::Code);
}

void VCardForm::Command3_Click()
{
    save(tr("Fields in Bold are required !!"));
}

void VCardForm::cmdOK_Click()
{
    if (save(tr("The required fields have not been completed !")))
        requestUnload(CloseMode::Code);
}

bool VCardForm::save(const QString& incomplete)
{
    const VCard written = card();
    const auto missing = written.missingRequired();
    if (!missing.isEmpty())
        return showMissing(missing, incomplete), false;
    const auto& boxes = client_.desktop.boxes;
    if (!client_.isConnected() || !client_.Application)
        return boxes->exclamation(tr("Attention!"), tr("You are not connected. The card was not saved.")),
               false;
    if (!SendStanza(*client_.Application, written.stanza()))
        return boxes->exclamation(
                   tr("Attention!"),
                   tr("The card was not saved: %1").arg(client_.Application->OutPacket().lastError())),
               false;
    showState(tr("The card was sent to the server."));
    return true;
}

// The marks stand already while the box is up; the first field to fill waits behind it.
void VCardForm::showMissing(const QStringList& controls, const QString& text)
{
    for (const auto& control : controls)
        markRequired(*field(control));
    auto* first = field(controls.first());
    for (int page = 0; page < ui_->SSTab1->count(); ++page) {
        if (ui_->SSTab1->widget(page)->isAncestorOf(first))
            ui_->SSTab1->setCurrentIndex(page);
    }
    first->setFocus();
    client_.desktop.boxes->exclamation(tr("Attention!"), text);
}

VCard VCardForm::card() const
{
    VCard written;
    VCard::forEachField(written,
                        [this](const QString& control, QString& value) { value = field(control)->text(); });
    return written;
}

QLineEdit* VCardForm::field(const QString& control) const
{
    return findChild<QLineEdit*>(control);
}

void VCardForm::showState(const QString& text)
{
    ui_->lblState->setText(text);
    ui_->lblState->setVisible(!text.isEmpty());
}

void VCardForm::Label5_Click()
{
    openLink(card().mailLink());
}

void VCardForm::Label7_Click()
{
    openLink(card().webLink());
}

void VCardForm::showLinks()
{
    ui_->Label5->setVisible(!ui_->email->text().isEmpty());
    ui_->Label7->setVisible(!ui_->persurl->text().isEmpty());
}

void VCardForm::openLink(const QString& link)
{
    if (!link.isEmpty() && !client_.desktop.links->open(link))
        showState(tr("This address can't be opened."));
}
