#include "preferences/forms/RestoreRegForm.h"

#include "ui_RestoreRegForm.h"

RestoreRegForm::RestoreRegForm(FormRegistry& registry)
    : Form(registry, QStringLiteral("RestoreRegForm")), ui_(std::make_unique<Ui::RestoreRegForm>())
{
    ui_->setupUi(this);
    setWindowModality(Qt::ApplicationModal);
    setDefaultButton(ui_->cmdNo);
    setCancelButton(ui_->cmdNo);
    connect(ui_->cmdNo, &QPushButton::clicked, this, [this] { requestUnload(CloseMode::Code); });
    connect(ui_->cmdYes, &QPushButton::clicked, this, [this] {
        emit confirmed();
        requestUnload(CloseMode::Code);
    });
    ui_->cmdNo->setFocus();
}

RestoreRegForm::~RestoreRegForm() = default;
