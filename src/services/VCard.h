#pragma once

#include <QString>
#include <QStringList>
#include <pugixml.hpp>

class Stanza;

// A person's card (vcard-temp, XEP-0054) as the window shows it. Each member is named as its control.
struct VCard {
    struct Place {
        QString ind1; // street
        QString ind2; // what the street doesn't say
        QString city;
        QString state;
        QString zip;
        QString country;
        QString tel;
        QString fax;
        bool operator==(const Place&) const = default;
    };

    QString name1; // given name
    QString middle;
    QString surname;
    QString nick;
    QString email; // the preferred address
    QString persurl;
    QString birth; // as the person wrote it
    QString occupation;
    QString emails; // another address
    QString company;
    QString dep;
    QString position;
    Place home;
    Place work; // its controls end in "work"

    // The card of an answer, in the old spelling or in that of today; empty for an error and for no card.
    static VCard of(const Stanza& stanza);
    // `card` is the VCARD element. Of two elements for one field the first that says something counts; what
    // has no field is passed over unread.
    static VCard fromXml(pugi::xml_node card);

    // The request that saves the card as the account's own. The middle name goes into FN only.
    QString stanza() const;
    // The controls of the required fields that are empty, in the window's order.
    QStringList missingRequired() const;
    // The addresses as links, safe or not; empty without an address.
    QString mailLink() const;
    QString webLink() const;

    // Calls `each` with the control's name and the field, for all fields in the window's order.
    template <typename Card, typename Each>
    static void forEachField(Card& card, Each&& each);

    bool operator==(const VCard&) const = default;
};

template <typename Card, typename Each>
void VCard::forEachField(Card& card, Each&& each)
{
    const auto place = [&each](auto& at, const QString& ending) {
        each(QStringLiteral("ind1") + ending, at.ind1);
        each(QStringLiteral("ind2") + ending, at.ind2);
        each(QStringLiteral("city") + ending, at.city);
        each(QStringLiteral("state") + ending, at.state);
        each(QStringLiteral("zip") + ending, at.zip);
        each(QStringLiteral("country") + ending, at.country);
        each(QStringLiteral("tel") + ending, at.tel);
        each(QStringLiteral("fax") + ending, at.fax);
    };
    each(QStringLiteral("name1"), card.name1);
    each(QStringLiteral("middle"), card.middle);
    each(QStringLiteral("surname"), card.surname);
    each(QStringLiteral("nick"), card.nick);
    each(QStringLiteral("email"), card.email);
    each(QStringLiteral("emails"), card.emails);
    each(QStringLiteral("persurl"), card.persurl);
    each(QStringLiteral("birth"), card.birth);
    each(QStringLiteral("occupation"), card.occupation);
    place(card.home, QString());
    each(QStringLiteral("company"), card.company);
    each(QStringLiteral("dep"), card.dep);
    each(QStringLiteral("position"), card.position);
    place(card.work, QStringLiteral("work"));
}
