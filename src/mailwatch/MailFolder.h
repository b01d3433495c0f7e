#pragma once

#include <QString>
#include <QUrl>

// A mailbox's folder by its URL, as the person typed it.
class MailFolder
{
public:
    MailFolder() = default;
    // A password within the URL is dropped: it would be shown, stored and handed to the browser.
    explicit MailFolder(const QString& typed);

    const QString& text() const { return text_; }
    // For requests. Empty for what no mail server can be asked about: it needs http or https, and a host.
    QUrl address() const;
    // The page of a new message in the mailbox, http://host/exchange/mailbox/drafts/?cmd=new; empty where the
    // URL names no mailbox.
    QString composeAddress() const;
    // An address as browsers take it: what may not stand in one, such as a blank, is percent-encoded.
    static QString link(const QString& address);

private:
    QString text_;
};
