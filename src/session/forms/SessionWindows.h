#pragma once

#include <QObject>
#include <QString>

#include <memory>

class FormRegistry;
class LoggingInForm;
class SettingsStore;
class SignInForm;
struct Client;

// The room's face: the sign-in window, which lives for the whole run, and the progress and About windows,
// each made at first use.
class SessionWindows : public QObject
{
    Q_OBJECT

public:
    // All must outlive the object.
    SessionWindows(FormRegistry& registry, Client& client, SettingsStore& store);
    ~SessionWindows() override;

    SignInForm& signIn() const { return *signIn_; }

    LoggingInForm* progressIfLoaded() const;
    LoggingInForm& progress();
    // A line for the progress window, if it is there.
    void tellProgress(const QString& text);
    void closeProgress();
    void showAbout();
    // A page of the product's site; says so where no site is configured.
    void openPage(const QString& path);

signals:
    // The sign-in is to be given up.
    void cancelRequested();

private:
    void showProgress();

    FormRegistry& registry_;
    Client& client_;
    std::unique_ptr<SignInForm> signIn_;
};
