#include "desktop/forms/ShowInTrayForm.h"

#include "desktop/forms/ImageList.h"

#include "ui_ShowInTrayForm.h"

ShowInTrayForm::ShowInTrayForm(FormRegistry& registry)
    : Form(registry, QStringLiteral("ShowInTrayForm")), ui_(std::make_unique<Ui::ShowInTrayForm>())
{
    ui_->setupUi(this);
    setWindowTitle(tr("%1 - Brelo Instant Messenger").arg(QCoreApplication::applicationName()));
    ui_->picIcon->setPixmap(
        ImageList::icon(QStringLiteral("breloim")).pixmap(ui_->picIcon->minimumSize(), devicePixelRatioF()));
    setDefaultButton(ui_->cmdOK);
    setCancelButton(ui_->cmdOK);
    connect(ui_->cmdOK, &QPushButton::clicked, this, [this] { requestUnload(CloseMode::Code); });
}

ShowInTrayForm::~ShowInTrayForm() = default;

void ShowInTrayForm::setTexts(const QString& title, const QString& description)
{
    ui_->lblTitle->setText(title);
    ui_->lblDescription->setText(description);
}
