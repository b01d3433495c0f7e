#include "services/GatewayForm.h"

#include "engine/Stanza.h"
#include "engine/Xml.h"

namespace
{

constexpr std::string_view registration = "jabber:iq:register";

bool isQuery(pugi::xml_node node)
{
    return std::string_view(node.name()) == "query" && xml::xmlns(node) == registration;
}

// Some names mean more than a field, however they are spelled.
void take(GatewayForm& form, pugi::xml_node child)
{
    const QString name = xml::fromUtf8(child.name());
    const QString special = name.toUpper();
    if (special == u"INSTRUCTIONS")
        form.instructions = xml::text(child);
    else if (special == u"KEY")
        form.key = xml::text(child);
    else if (special == u"REGISTERED")
        form.registeredAt = form.fields.size();
    else if (++form.asked <= GatewayForm::mostFields)
        form.fields.append({name, xml::text(child)});
}

} // namespace

bool GatewayForm::Field::isSecret() const
{
    return name.contains(QLatin1String("password"), Qt::CaseInsensitive);
}

bool GatewayForm::Field::canBeSent() const
{
    return xml::isElementName(name);
}

std::optional<GatewayForm> GatewayForm::of(const Stanza& answer)
{
    std::optional<GatewayForm> form;
    for (const auto query : answer.root().children()) {
        if (!isQuery(query))
            continue;
        if (!form)
            form.emplace();
        for (const auto child : query.children()) {
            if (child.type() != pugi::node_element)
                continue;
            if (xml::xmlns(child) == registration)
                take(*form, child);
            else
                form->hasOtherForm = true;
        }
    }
    return form;
}

QString GatewayForm::query(const QString& jid)
{
    return QStringLiteral("<iq type=\"get\" id=\"transportquery\" to=\"%1\"><query "
                          "xmlns=\"jabber:iq:register\"></query></iq>")
        .arg(xml::escaped(jid));
}

QString GatewayForm::submission(const QString& jid, const QList<Field>& fields, const QString& key)
{
    QString inner;
    for (const auto& field : fields) {
        if (field.canBeSent())
            inner += u'<' + field.name + u'>' + xml::escaped(field.value) + QStringLiteral("</") +
                     field.name + u'>';
    }
    return QStringLiteral("<iq type=\"set\" id=\"register-transport\" to=\"%1\"><query "
                          "xmlns=\"jabber:iq:register\">%2<key>%3</key></query></iq>")
        .arg(xml::escaped(jid), inner, xml::escaped(key));
}

QString GatewayForm::removal(const QString& jid, const QString& key)
{
    return QStringLiteral("<iq id=\"VRX_UNREGISTER\" to=\"%1\" type=\"set\"><query "
                          "xmlns=\"jabber:iq:register\"><remove/><key>%2</key></query></iq>")
        .arg(xml::escaped(jid), xml::escaped(key));
}
