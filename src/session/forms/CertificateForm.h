#pragma once

#include "engine/ConnectionHost.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class CertificateForm;
}

// Shows a certificate that could not be verified and asks what to do. Escape and the close box refuse.
class CertificateForm : public QDialog
{
    Q_OBJECT

public:
    explicit CertificateForm(const CertificateInfo& info, QWidget* parent = nullptr);
    ~CertificateForm() override;

    CertificateAnswer answer() const { return answer_; }

private:
    void addFact(const QString& label, const QString& value, const QString& name);
    void finish(CertificateAnswer answer);

    std::unique_ptr<Ui::CertificateForm> ui_;
    CertificateAnswer answer_ = CertificateAnswer::Refuse;
};
