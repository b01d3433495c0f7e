#include "session/forms/SessionWindows.h"

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "session/forms/AboutForm.h"
#include "session/forms/LoggingInForm.h"
#include "session/forms/SignInForm.h"

SessionWindows::SessionWindows(FormRegistry& registry, Client& client, SettingsStore& store)
    : registry_(registry), client_(client), signIn_(std::make_unique<SignInForm>(registry, client, store))
{
    connect(signIn_.get(), &SignInForm::progressWanted, this, &SessionWindows::showProgress);
    connect(signIn_.get(), &SignInForm::pageRequested, this, &SessionWindows::openPage);
}

SessionWindows::~SessionWindows() = default;

LoggingInForm* SessionWindows::progressIfLoaded() const
{
    return qobject_cast<LoggingInForm*>(registry_.find(QStringLiteral("LoggingInForm")));
}

LoggingInForm& SessionWindows::progress()
{
    return registry_.single<LoggingInForm>(QStringLiteral("LoggingInForm"), [this] {
        auto* form = new LoggingInForm(registry_);
        connect(form, &LoggingInForm::cancelRequested, this, &SessionWindows::cancelRequested);
        return form;
    });
}

void SessionWindows::showProgress()
{
    progress().appendLine(tr("Connecting..."));
    progress().show();
}

void SessionWindows::tellProgress(const QString& text)
{
    if (auto* form = progressIfLoaded())
        form->appendLine(text);
}

void SessionWindows::closeProgress()
{
    if (auto* form = progressIfLoaded())
        form->requestUnload(CloseMode::Code);
}

void SessionWindows::showAbout()
{
    registry_
        .single<AboutForm>(QStringLiteral("AboutForm"), [this] { return new AboutForm(client_, registry_); })
        .bringUp();
}

void SessionWindows::openPage(const QString& path)
{
    if (client_.site.WebSite.isEmpty())
        client_.desktop.boxes->information(tr("BreloIM"), tr("No web site is configured for this program."));
    else
        client_.desktop.links->open(QStringLiteral("https://") + client_.site.WebSite + path);
}
