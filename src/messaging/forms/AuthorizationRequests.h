#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

class FormRegistry;
class PlugInContext;
class authorizeForm;
struct Client;

// The requests of others to see the own presence (RFC 6121, 3.1). The settings answer them, or the person is
// asked: in one window for each bare JID, in a few windows at once, and the others wait their turn.
class AuthorizationRequests : public QObject
{
    Q_OBJECT

public:
    // Both must outlive the object.
    AuthorizationRequests(FormRegistry& registry, Client& client) : registry_(registry), client_(client) {}

    void take(const PlugInContext& context);

private:
    bool isSettled(const QString& from) const;
    void bringUp(authorizeForm& form);
    void open(const QString& from);
    void openNext();
    void forgetOldSession();

    FormRegistry& registry_;
    Client& client_;
    QHash<QString, QPointer<authorizeForm>> open_; // by bare JID
    QStringList waiting_;                          // who asked, in their order
    QSet<QString> waitingJids_;                    // bare
    QElapsedTimer raised_;
    int session_ = 0;
};
