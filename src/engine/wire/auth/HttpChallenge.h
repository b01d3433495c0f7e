#pragma once

#include <QByteArray>
#include <QHash>

// What a server wants for a password over HTTP: the value of WWW-Authenticate, with one challenge or several.
class HttpChallenge
{
public:
    // In the order in which they are preferred. Token: NTLM or Negotiate, which take several steps.
    enum class Scheme { None, Basic, Digest, Token };

    explicit HttpChallenge(const QByteArray& header);

    // The best that is offered and known.
    Scheme scheme() const { return scheme_; }
    // The value of Authorization for Basic (RFC 7617) and for Digest with MD5 or SHA-256 (RFC 7616), else
    // empty. `target` is the request's path and query; `cnonce` is the client's random word.
    QByteArray answer(const QByteArray& method, const QByteArray& target, const QByteArray& user,
                      const QByteArray& password, const QByteArray& cnonce) const;

private:
    using Words = QHash<QByteArray, QByteArray>; // by name in lower case, quoted ones with their escapes
    void consider(const QByteArray& scheme, const Words& words);
    QByteArray digest(const QByteArray& method, const QByteArray& target, const QByteArray& user,
                      const QByteArray& password, const QByteArray& cnonce) const;

    Scheme scheme_ = Scheme::None;
    Words words_;
};
