#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QString>

#include <functional>

struct Client;

// Adds people to the contact list whom the person has found or knows the address of.
class ContactAdding
{
    Q_DECLARE_TR_FUNCTIONS(ContactAdding)

public:
    // Writes a line into the notices window and shows it.
    using Notice = std::function<void(const QString& from, const QString& body, const QString& subject)>;

    // The client must outlive the object.
    ContactAdding(Client& client, Notice notice) : client_(client), notice_(std::move(notice)) {}

    // Asks the server for the contact and the contact for its presence, and notes it. False after a box that
    // says why nothing was sent.
    bool add(const QString& jid);

private:
    // Null for an address that can be asked.
    QString fault(const QString& jid) const;

    Client& client_;
    Notice notice_;
    QString last_; // who was asked last, before the server's list tells of it
    QDateTime lastAt_;
};
