#pragma once

#include "engine/Stanza.h"
#include "engine/wire/auth/AuthRequest.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QList>
#include <QString>

#include <memory>

// In-band registration (XEP-0077) on a stream that is not authenticated: the server's fields are asked for,
// then filled, flat or as a data form (XEP-0004). Elements in, texts out.
class AccountRegistration
{
    Q_DECLARE_TR_FUNCTIONS(AccountRegistration)

public:
    enum class State { Working, Done };

    // `clientStanza` is the client's jabber:iq:register set (UTF-8): its id is the outcome's, its fields are
    // the account's. `request` tells the domain and whether a password may cross this stream, and what the
    // client left out.
    AccountRegistration(AuthRequest request, const QByteArray& clientStanza);

    // The stream is open and STARTTLS has been dealt with. `features` may be null.
    void streamOpened(pugi::xml_node features);
    // Every top-level element until Done.
    void feed(const Stanza& element);
    // The stream ended or never came up: `reason`, a sentence for a person, becomes the outcome.
    void fail(const QString& reason);
    QList<QByteArray> takeOutput() { return std::exchange(output_, {}); }

    State state() const { return state_; }
    // The outcome, once: an iq with the client's id, a result, or an error with the server's text in
    // <error/>.
    std::shared_ptr<Stanza> takeResult() { return std::exchange(result_, nullptr); }

private:
    enum class Step { Idle, Asking, Setting };

    void fieldsArrived(pugi::xml_node query);
    QString formAnswer(pugi::xml_node query) const;
    QString flatAnswer(pugi::xml_node query) const;
    void succeed();
    void finishWithError(int code, const QString& text);

    AuthRequest request_;
    QString id_;
    QHash<QString, QString> values_;
    Step step_ = Step::Idle;
    State state_ = State::Working;
    std::shared_ptr<Stanza> result_;
    QList<QByteArray> output_;
};
