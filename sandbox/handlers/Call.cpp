#include "sandbox/handlers/Call.h"

namespace sandbox
{

void Call::result() const
{
    client.send(answer("result"));
}

void Call::result(const QString& xml) const
{
    client.send(answer("result").raw(xml));
}

void Call::error(int code, const QString& text) const
{
    Element refusal = answer("error");
    if (stanza.name() == u"message")
        refusal.raw(stanza.content());
    else if (const auto query = stanza.query())
        refusal.add(Element(query.name()).option("xmlns", stanza.xmlns()));
    client.send(refusal.add(Element("error").set("code", QString::number(code)).text(text)));
}

Element Call::forwarded(const QString& from, const QString& to) const
{
    Element copy(stanza.name().toUtf8().constData());
    copy.option("type", stanza.type()).option("id", stanza.id()).set("from", from).set("to", to);
    return copy.raw(stanza.content());
}

Element Call::answer(const char* type) const
{
    Element element(stanza.name().toUtf8().constData());
    element.set("type", QLatin1String(type)).option("id", stanza.id()).option("from", stanza.to());
    return client.isBound() ? element.set("to", client.fullJid()) : element;
}

} // namespace sandbox
