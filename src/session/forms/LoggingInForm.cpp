#include "session/forms/LoggingInForm.h"

#include "session/forms/ui_LoggingInForm.h"

#include <QIcon>
#include <QPalette>

LoggingInForm::LoggingInForm(FormRegistry& registry)
    : Form(registry, QStringLiteral("LoggingInForm")), ui_(std::make_unique<Ui::LoggingInForm>())
{
    ui_->setupUi(this);
    setCentralWidget(ui_->page);
    ui_->picture->setPixmap(QIcon(QStringLiteral(":/icons/breloim.svg")).pixmap(48));
    ui_->Label1->viewport()->setAutoFillBackground(false);
    setCancelButton(ui_->Command1);
    setDefaultButton(ui_->Command1);
    ui_->Command1->setFocus();
    connect(ui_->Command1, &QPushButton::clicked, this, &LoggingInForm::cancelRequested);
}

LoggingInForm::~LoggingInForm() = default;

void LoggingInForm::appendLine(const QString& text)
{
    ui_->Label1->appendPlainText(text);
}

bool LoggingInForm::queryUnload(CloseMode mode)
{
    if (mode != CloseMode::User)
        return true;
    emit cancelRequested();
    return false;
}
