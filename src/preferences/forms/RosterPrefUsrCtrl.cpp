#include "preferences/forms/RosterPrefUsrCtrl.h"

#include "contacts/Client.h"
#include "desktop/forms/StoredColour.h"

#include "ui_RosterPrefUsrCtrl.h"

namespace
{

void paint(QLabel* shape, int colour)
{
    auto palette = shape->palette();
    palette.setColor(QPalette::Window, storedcolour::toColour(colour));
    shape->setPalette(palette);
    // Whoever doesn't see the colour is told it.
    const QString name = palette.color(QPalette::Window).name();
    shape->setToolTip(name);
    shape->setAccessibleName(name);
}

void showSample(QLineEdit* sample, const FontChoice& choice)
{
    QFont font(choice.name);
    font.setPointSizeF(qBound(4.0, choice.size, 24.0));
    font.setBold(choice.bold);
    font.setItalic(choice.italic);
    sample->setFont(font);
    sample->setText(QStringLiteral("%1, %2").arg(choice.name, QString::number(choice.size)));
}

} // namespace

RosterPrefUsrCtrl::RosterPrefUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::RosterPrefUsrCtrl>()),
      online_(client.settings.ColorOnline),
      offline_(client.settings.ColorOffline), font_{client.settings.CharOnLineName,
                                                    client.settings.CharOnLineSize,
                                                    client.settings.CharOnLineBold,
                                                    client.settings.CharOnLineItalic}
{
    ui_->setupUi(this);
    showColours();
    showFont();
    const auto& settings = client.settings;
    showSample(ui_->Text2,
               {settings.CharOffLineName, settings.CharOffLineSize, settings.CharOnffLineBold, false});
    connect(ui_->cmdChangeOnLine, &QPushButton::clicked, this, [this] { change(online_); });
    connect(ui_->cmdChangeOffLine, &QPushButton::clicked, this, [this] { change(offline_); });
    connect(ui_->cmdFontOnLine, &QPushButton::clicked, this, &RosterPrefUsrCtrl::cmdFontOnLine_Click);
    onSave([this](Settings& saved) {
        saved.ColorOnline = online_;
        saved.ColorOffline = offline_;
        saved.CharOnLineName = font_.name;
        saved.CharOnLineSize = font_.size;
        saved.CharOnLineBold = font_.bold;
        saved.CharOnLineItalic = font_.italic;
    });
}

RosterPrefUsrCtrl::~RosterPrefUsrCtrl() = default;

void RosterPrefUsrCtrl::showColours()
{
    paint(ui_->Shape1, online_);
    paint(ui_->Shape2, offline_);
}

void RosterPrefUsrCtrl::showFont()
{
    showSample(ui_->Text1, font_);
}

void RosterPrefUsrCtrl::change(int& colour)
{
    colour = client_.desktop.looks->colour(colour).value_or(colour);
    showColours();
}

void RosterPrefUsrCtrl::cmdFontOnLine_Click()
{
    font_ = client_.desktop.looks->font(font_).value_or(font_);
    showFont();
}
