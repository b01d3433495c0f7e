#include "desktop/forms/QtDesktop.h"

#include "desktop/SafeLink.h"
#include "desktop/forms/Form.h"
#include "desktop/forms/StoredColour.h"

#include <QApplication>
#include <QColorDialog>
#include <QCursor>
#include <QDebug>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QUrl>

namespace
{

constexpr int longestText = 1500;      // characters that a box shows before it would outgrow the screen
constexpr int longestDetails = 10'000; // characters that are laid out in no time, unbroken as they may be

QMessageBox::Icon iconOf(MessageBoxes::Icon icon)
{
    switch (icon) {
    case MessageBoxes::Icon::Information:
        return QMessageBox::Information;
    case MessageBoxes::Icon::Question:
        return QMessageBox::Question;
    case MessageBoxes::Icon::Exclamation:
        return QMessageBox::Warning;
    case MessageBoxes::Icon::Critical:
        return QMessageBox::Critical;
    case MessageBoxes::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsOf(MessageBoxes::Buttons buttons)
{
    switch (buttons) {
    case MessageBoxes::Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MessageBoxes::Buttons::YesNoCancel:
    case MessageBoxes::Buttons::NoYesCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MessageBoxes::Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

MessageBoxes::Answer answerOf(int button)
{
    switch (button) {
    case QMessageBox::Yes:
        return MessageBoxes::Answer::Yes;
    case QMessageBox::No:
        return MessageBoxes::Answer::No;
    case QMessageBox::Ok:
        return MessageBoxes::Answer::Ok;
    default:
        return MessageBoxes::Answer::Cancel;
    }
}

// The window that a dialog stands above, which gets the keyboard back afterwards.
struct Owner {
    ~Owner() { Form::expectActive(QApplication::activeWindow() ? nullptr : window.data()); }
    operator QWidget*() const { return window; }

    QPointer<QWidget> window = Form::inUse();
};

} // namespace

MessageBoxes::Answer QtMessageBoxes::show(const QString& title, const QString& text, Icon icon,
                                          Buttons buttons)
{
    if (unattended_) {
        qWarning().noquote() << title << "-" << text;
        return buttons == Buttons::Ok ? Answer::Ok : Answer::No;
    }
    const Owner owner;
    QMessageBox box(iconOf(icon), title, QString(), buttonsOf(buttons), owner);
    box.setTextFormat(Qt::PlainText);
    box.setText(text.size() > longestText ? text.left(longestText) + QChar(0x2026) : text);
    if (text.size() > longestText)
        box.setDetailedText(text.left(longestDetails));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (buttons == Buttons::NoYesCancel || (icon == Icon::Exclamation && buttons != Buttons::Ok))
        box.setDefaultButton(QMessageBox::No);
    return answerOf(box.exec());
}

std::optional<QString> QtMessageBoxes::input(const QString& title, const QString& prompt,
                                             const QString& preset)
{
    if (unattended_)
        return std::nullopt;
    const Owner owner;
    QInputDialog dialog(owner);
    dialog.setWindowTitle(title);
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setLabelText(prompt);
    dialog.setTextValue(preset);
    auto* edit = dialog.findChild<QLineEdit*>();
    edit->setAccessibleName(prompt);
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 40); // a whole address
    for (auto* label : dialog.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
        label->setBuddy(edit);
    }
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.textValue()) : std::nullopt;
}

QString QtFileDialogs::openFile(const QString& title, const QString& filter)
{
    return QFileDialog::getOpenFileName(Owner(), title, QString(), filter);
}

std::optional<int> QtLookDialogs::colour(int current)
{
    const QColor chosen = QColorDialog::getColor(storedcolour::toColour(current), Owner());
    return chosen.isValid() ? std::optional(storedcolour::fromColour(chosen)) : std::nullopt;
}

std::optional<FontChoice> QtLookDialogs::font(const FontChoice& current)
{
    // A family that isn't here is shown as what stands in for it.
    QFont initial(QFontInfo(QFont(current.name)).family());
    initial.setPointSizeF(current.size);
    initial.setBold(current.bold);
    initial.setItalic(current.italic);
    bool accepted = false;
    const QFont chosen = QFontDialog::getFont(&accepted, initial, Owner());
    if (!accepted || chosen == initial)
        return std::nullopt;
    return FontChoice{chosen.family(), chosen.pointSizeF(), chosen.bold(), chosen.italic()};
}

bool DesktopLinkOpener::open(const QString& link)
{
    return isSafeLink(link) && QDesktopServices::openUrl(QUrl(link, QUrl::StrictMode));
}

QDateTime SystemClock::now() const
{
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    if (now_.isNull() || second != second_) {
        second_ = second;
        now_ = QDateTime::fromSecsSinceEpoch(second);
    }
    return now_;
}

QPoint CursorPointer::position() const
{
    return QCursor::pos();
}
