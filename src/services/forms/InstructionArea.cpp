#include "services/forms/InstructionArea.h"

#include "messaging/LongLines.h"

#include <QLabel>
#include <QScrollBar>

namespace
{

constexpr int mostLines = 8; // before it scrolls

// A word of any length can be wrapped then.
QString breakable(const QString& text)
{
    constexpr int longestWord = 40;
    QString result;
    int word = 0;
    for (const QChar c : text) {
        word = c.isSpace() ? 0 : word + 1;
        if (word > longestWord && !c.isLowSurrogate() && !c.isMark()) {
            result += QChar(0x200B); // a place to break
            word = 1;
        }
        result += c;
    }
    return result;
}

QString shown(const QString& text)
{
    constexpr qsizetype most = 16'384;
    constexpr int mostBreaks = 400;
    const qsizetype length = longlines::shownLength(text, most, mostBreaks);
    QString result;
    longlines::Cutter cutter;
    for (QStringView rest = QStringView(text).left(length); !rest.isEmpty();) {
        const auto piece = cutter.take(rest);
        result += rest.left(piece);
        rest = rest.mid(piece);
        if (!rest.isEmpty())
            result += u'\n';
    }
    return breakable(length == text.size() ? result : result + QStringLiteral("..."));
}

} // namespace

InstructionArea::InstructionArea(const QString& name, QWidget* parent)
    : QScrollArea(parent), label_(new QLabel(this))
{
    label_->setObjectName(name);
    label_->setTextFormat(Qt::PlainText);
    label_->setWordWrap(true);
    label_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setWidget(label_);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setFocusPolicy(Qt::NoFocus);
}

void InstructionArea::setText(const QString& text)
{
    label_->setText(shown(text));
    setAccessibleName(label_->text());
    updateGeometry();
}

QString InstructionArea::text() const
{
    return label_->text();
}

int InstructionArea::highest() const
{
    return label_->fontMetrics().lineSpacing() * mostLines;
}

int InstructionArea::heightForWidth(int width) const
{
    const int whole = label_->heightForWidth(width);
    if (whole <= highest())
        return qMax(whole, label_->fontMetrics().lineSpacing());
    return highest();
}

QSize InstructionArea::sizeHint() const
{
    const int width = label_->fontMetrics().averageCharWidth() * 50;
    return {width, heightForWidth(width)};
}

QSize InstructionArea::minimumSizeHint() const
{
    return {label_->fontMetrics().averageCharWidth() * 20, label_->fontMetrics().lineSpacing()};
}

// Whoever scrolls with the keys comes here only where there is something to scroll.
void InstructionArea::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    const bool scrolls = label_->heightForWidth(viewport()->width()) > viewport()->height();
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
}
