#include "services/VCard.h"

#include "engine/Stanza.h"
#include "engine/Xml.h"

#include <array>
#include <string_view>

namespace
{

// Numbers and mail addresses stand in the element itself or in a child of their own: both are its text.
void take(QString& field, pugi::xml_node node)
{
    if (node && field.isEmpty())
        field = xml::text(node).trimmed();
}

VCard::Place* placeOf(VCard& card, pugi::xml_node node)
{
    if (node.child("HOME"))
        return &card.home;
    return node.child("WORK") ? &card.work : nullptr;
}

void readName(VCard& card, pugi::xml_node node)
{
    take(card.name1, node.child("GIVEN"));
    take(card.surname, node.child("FAMILY"));
    take(card.middle, node.child("MIDDLE"));
}

// Our own cards carry the middle name in the full name only, between the other two.
void readFullName(VCard& card, const QString& full)
{
    const QString before = card.name1 + u' ';
    const QString behind = u' ' + card.surname;
    const bool spans = full.size() > before.size() + behind.size() - 1;
    if (card.middle.isEmpty() && spans && full.startsWith(before) && full.endsWith(behind))
        card.middle = full.mid(before.size(), full.size() - before.size() - behind.size()).trimmed();
}

void readOrganisation(VCard& card, pugi::xml_node node)
{
    take(card.company, node.child("ORGNAME"));
    take(card.dep, node.child("ORGUNIT"));
}

void readTelephone(VCard& card, pugi::xml_node node)
{
    auto* place = placeOf(card, node);
    if (!place)
        return;
    if (node.child("VOICE"))
        take(place->tel, node);
    else if (node.child("fax") || node.child("FAX"))
        take(place->fax, node);
}

void readAddress(VCard& card, pugi::xml_node node)
{
    auto* place = placeOf(card, node);
    if (!place)
        return;
    take(place->ind2, node.child("EXTADD"));
    take(place->ind1, node.child("STREET"));
    take(place->city, node.child("LOCALITY"));
    take(place->state, node.child("REGION"));
    take(place->zip, node.child("PCODE"));
    take(place->country, node.child("COUNTRY"));
    take(place->country, node.child("CTRY"));
}

void readMail(VCard& card, pugi::xml_node node)
{
    take(node.child("PREF") ? card.email : card.emails, node);
}

template <QString VCard::*Field>
void readText(VCard& card, pugi::xml_node node)
{
    take(card.*Field, node);
}

struct Reader {
    std::string_view element;
    void (*read)(VCard&, pugi::xml_node);
};

constexpr std::array readers{
    Reader{"N", readName},
    Reader{"NICKNAME", readText<&VCard::nick>},
    Reader{"URL", readText<&VCard::persurl>},
    Reader{"BDAY", readText<&VCard::birth>},
    Reader{"ORG", readOrganisation},
    Reader{"ROLE", readText<&VCard::occupation>},
    Reader{"TITLE", readText<&VCard::position>},
    Reader{"TEL", readTelephone},
    Reader{"ADR", readAddress},
    Reader{"EMAIL", readMail},
};

// `marks` are the empty elements that tell of which kind the value is.
QString element(const char* name, const QString& value, const QString& marks = {})
{
    return QStringLiteral("<%1>%2%3</%1>").arg(QLatin1String(name), marks, xml::escaped(value));
}

QString placeXml(const QString& mark, const VCard::Place& place)
{
    return element("TEL", place.tel, QStringLiteral("<VOICE/>") + mark) +
           element("TEL", place.fax, QStringLiteral("<fax/>") + mark) +
           element("TEL", QString(), QStringLiteral("<MSG/>") + mark) + QStringLiteral("<ADR>") + mark +
           element("EXTADD", place.ind2) + element("STREET", place.ind1) + element("LOCALITY", place.city) +
           element("REGION", place.state) + element("PCODE", place.zip) + element("COUNTRY", place.country) +
           QStringLiteral("</ADR>");
}

} // namespace

VCard VCard::of(const Stanza& stanza)
{
    if (stanza.IqFields().Type() == u"error")
        return {};
    const auto card = stanza.root().child("VCARD");
    return fromXml(card ? card : stanza.root().child("vCard"));
}

VCard VCard::fromXml(pugi::xml_node card)
{
    VCard result;
    for (const auto child : card.children()) {
        for (const auto& reader : readers) {
            if (reader.element == child.name())
                reader.read(result, child);
        }
    }
    readFullName(result, xml::text(card.child("FN")).trimmed());
    return result;
}

QString VCard::stanza() const
{
    return QStringLiteral("<iq type=\"set\" id=\"JCOM_51\"><VCARD version=\"3.0\" xmlns=\"vcard-temp\">") +
           element("FN", name1 + u' ' + middle + u' ' + surname) + QStringLiteral("<N>") +
           element("GIVEN", name1) + element("FAMILY", surname) + QStringLiteral("<MIDDLE/></N>") +
           element("NICKNAME", nick) + element("URL", persurl) + element("BDAY", birth) +
           QStringLiteral("<ORG>") + element("ORGNAME", company) + element("ORGUNIT", dep) +
           QStringLiteral("</ORG>") + element("TITLE", position) + element("ROLE", occupation) +
           placeXml(QStringLiteral("<HOME/>"), home) + placeXml(QStringLiteral("<WORK/>"), work) +
           element("EMAIL", email, QStringLiteral("<INTERNET/><PREF/>")) +
           element("EMAIL", emails, QStringLiteral("<INTERNET/>")) + QStringLiteral("</VCARD></iq>");
}

QStringList VCard::missingRequired() const
{
    static const QStringList required = {QStringLiteral("name1"), QStringLiteral("surname"),
                                         QStringLiteral("nick"), QStringLiteral("email")};
    QStringList missing;
    forEachField(*this, [&missing](const QString& control, const QString& value) {
        if (value.isEmpty() && required.contains(control))
            missing += control;
    });
    return missing;
}

QString VCard::mailLink() const
{
    return email.isEmpty() ? QString() : QStringLiteral("mailto:") + email;
}

// People write their page without the scheme, as browsers allow.
QString VCard::webLink() const
{
    return persurl.isEmpty() || persurl.contains(u':') ? persurl : QStringLiteral("http://") + persurl;
}
