#include "engine/wire/auth/HttpChallenge.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QString>

#include <optional>
#include <utility>

namespace
{

std::optional<QCryptographicHash::Algorithm> algorithmOf(const QByteArray& name)
{
    const QByteArray known = name.toUpper();
    if (known.isEmpty() || known == "MD5")
        return QCryptographicHash::Md5;
    return known == "SHA-256" ? std::optional(QCryptographicHash::Sha256) : std::nullopt;
}

} // namespace

// A word with a "=" behind it belongs to the scheme before it.
HttpChallenge::HttpChallenge(const QByteArray& header)
{
    static const QRegularExpression piece(
        QStringLiteral(R"re(([^\s,="]+)(?:\s*=\s*(?:"((?:[^"\\]|\\.)*)"|([^\s,]*)))?)re"));
    QByteArray scheme;
    Words words;
    auto pieces = piece.globalMatch(QString::fromLatin1(header));
    while (pieces.hasNext()) {
        const auto match = pieces.next();
        const QByteArray name = match.captured(1).toLatin1().toLower();
        if (match.hasCaptured(2) || match.hasCaptured(3)) {
            words.insert(name, (match.captured(2) + match.captured(3)).toLatin1());
        } else {
            consider(std::exchange(scheme, name), std::exchange(words, {}));
        }
    }
    consider(scheme, words);
}

void HttpChallenge::consider(const QByteArray& scheme, const Words& words)
{
    const bool isDigest = scheme == "digest" && algorithmOf(words.value("algorithm"));
    const Scheme offered = scheme == "ntlm" || scheme == "negotiate" ? Scheme::Token
                           : isDigest                                ? Scheme::Digest
                           : scheme == "basic"                       ? Scheme::Basic
                                                                     : Scheme::None;
    if (offered > scheme_) {
        scheme_ = offered;
        words_ = words;
    }
}

QByteArray HttpChallenge::answer(const QByteArray& method, const QByteArray& target, const QByteArray& user,
                                 const QByteArray& password, const QByteArray& cnonce) const
{
    if (scheme_ == Scheme::Basic)
        return "Basic " + (user + ':' + password).toBase64();
    return scheme_ == Scheme::Digest ? digest(method, target, user, password, cnonce) : QByteArray();
}

QByteArray HttpChallenge::digest(const QByteArray& method, const QByteArray& target, const QByteArray& user,
                                 const QByteArray& password, const QByteArray& cnonce) const
{
    const auto algorithm = *algorithmOf(words_.value("algorithm"));
    const auto hash = [algorithm](const QByteArray& text) {
        return QCryptographicHash::hash(text, algorithm).toHex();
    };
    const QByteArray realm = words_.value("realm");
    const QByteArray nonce = words_.value("nonce");
    // Servers of old know no quality of protection (RFC 2069).
    const bool hasQuality = words_.contains("qop");
    const QByteArray between = hasQuality ? ":00000001:" + cnonce + ":auth:" : QByteArray(":");
    QByteArray text = "Digest username=\"" + QByteArray(user).replace('\\', "\\\\").replace('"', "\\\"") +
                      "\", realm=\"" + realm + "\", nonce=\"" + nonce + "\", uri=\"" + target +
                      "\", response=\"" +
                      hash(hash(user + ':' + realm + ':' + password) + ':' + nonce + between +
                           hash(method + ':' + target)) +
                      '"';
    for (const char* name : {"algorithm", "opaque"}) {
        if (words_.contains(name))
            text += QByteArray(", ") + name + "=\"" + words_.value(name) + '"';
    }
    return hasQuality ? text + ", qop=auth, nc=00000001, cnonce=\"" + cnonce + '"' : text;
}
