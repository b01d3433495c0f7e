#pragma once

#include <QScrollArea>

class QLabel;

// A text that somebody else wrote: as high as it is, up to some lines, and scrolled where it is longer.
class InstructionArea : public QScrollArea
{
    Q_OBJECT

public:
    // `name` becomes the label's.
    explicit InstructionArea(const QString& name, QWidget* parent = nullptr);

    // Shown as plain text; what no screen could show is left out.
    void setText(const QString& text);
    QString text() const;

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int highest() const;

    QLabel* label_;
};
