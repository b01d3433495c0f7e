#include "engine/wire/auth/ResourceBinding.h"

#include "engine/StanzaError.h"
#include "engine/Xml.h"

#include <string_view>

namespace
{

constexpr std::string_view sessionNamespace = "urn:ietf:params:xml:ns:xmpp-session";
constexpr const char* bindId = "brelo-bind";
constexpr const char* sessionId = "brelo-session";

bool insistsOnSession(pugi::xml_node features)
{
    const auto session = features.child("session");
    return session && xml::xmlns(session) == sessionNamespace && !session.child("optional");
}

} // namespace

ResourceBinding::ResourceBinding(const QString& resource, pugi::xml_node features)
    : wantsSession_(insistsOnSession(features))
{
    if (features.child("bind"))
        bind(resource);
    else
        fail(tr("The server offers no session after signing in."));
}

void ResourceBinding::bind(const QString& resource)
{
    const auto content = resource.isEmpty()
                             ? QString()
                             : QStringLiteral("<resource>%1</resource>").arg(xml::escaped(resource));
    write(QStringLiteral(
              "<iq type=\"set\" id=\"%1\"><bind xmlns=\"urn:ietf:params:xml:ns:xmpp-bind\">%2</bind></iq>")
              .arg(QLatin1String(bindId), content));
}

void ResourceBinding::feed(const Stanza& element)
{
    if (outcome() != Outcome::Working || element.kind() != Stanza::Kind::Iq)
        return;
    const std::string_view id = element.root().attribute("id").value();
    const std::string_view type = element.root().attribute("type").value();
    if (id != (step_ == Step::Session ? sessionId : bindId))
        return;
    if (type == "result")
        answered(element.root());
    else if (type == "error")
        refused(element.root());
}

void ResourceBinding::answered(pugi::xml_node iq)
{
    if (step_ == Step::Session)
        return pass(jid_);
    jid_ = xml::text(iq.child("bind").child("jid")).trimmed();
    if (jid_.isEmpty())
        return fail(tr("The server gave no address for this session."));
    if (!wantsSession_)
        return pass(jid_);
    step_ = Step::Session;
    write(QStringLiteral(
              "<iq type=\"set\" id=\"%1\"><session xmlns=\"urn:ietf:params:xml:ns:xmpp-session\"/></iq>")
              .arg(QLatin1String(sessionId)));
}

void ResourceBinding::refused(pugi::xml_node iq)
{
    const auto error = StanzaError::of(iq);
    const bool isTheResource = error.code == 409 || error.code == 400 || error.code == 406;
    if (step_ == Step::Binding && isTheResource) {
        step_ = Step::BindingAnyResource;
        return bind({});
    }
    fail(tr("The server opened no session: %1").arg(error.sentence()));
}
