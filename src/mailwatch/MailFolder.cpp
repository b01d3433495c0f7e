#include "mailwatch/MailFolder.h"

#include <QRegularExpression>

MailFolder::MailFolder(const QString& typed) : text_(typed.trimmed())
{
    const QUrl url(text_);
    if (!url.password().isEmpty())
        text_ = url.toString(QUrl::RemovePassword);
}

QUrl MailFolder::address() const
{
    const QUrl url(text_);
    const bool isWeb = url.scheme() == u"http" || url.scheme() == u"https";
    return url.isValid() && isWeb && !url.host().isEmpty() ? url : QUrl();
}

// Up to the mailbox, the third part of the URL; what follows it names a folder.
QString MailFolder::composeAddress() const
{
    static const QRegularExpression mailbox(QStringLiteral("https?://[^/]*/[^/]*/[^/]*"),
                                            QRegularExpression::CaseInsensitiveOption);
    const auto match = mailbox.match(text_);
    return match.hasMatch() ? text_.left(match.capturedEnd()) + QStringLiteral("/drafts/?cmd=new")
                            : QString();
}

QString MailFolder::link(const QString& address)
{
    return QUrl(address, QUrl::StrictMode).isValid() ? address
                                                     : QString::fromLatin1(QUrl(address).toEncoded());
}
