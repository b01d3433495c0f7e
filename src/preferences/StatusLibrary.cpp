#include "preferences/StatusLibrary.h"

#include "contacts/Client.h"
#include "engine/Xml.h"
#include "settings/Paths.h"

#include <QCoreApplication>

#include <iterator>

namespace
{

constexpr auto firstContent =
    R"(<breloim><status type="Available"><message>On Line</message></status>)"
    R"(<status type="Away"><message>Not at my desk rigth now</message><message>Coffe Break</message></status>)"
    R"(<status type="Extended Away"><message>Extended Away</message><message>Gone Home</message>)"
    R"(<message>At Work</message><message>I'm sleeping</message></status>)"
    R"(<status type="Do Not Disturb"><message>Do Not Disturb</message><message>In a meeting</message>)"
    R"(<message>Working</message></status>)"
    R"(<status type="Free For Chat"><message>Free For Chat</message></status></breloim>)";

pugi::xml_node statusOf(const pugi::xml_document& document, const QString& state)
{
    return document.document_element().find_child([&](pugi::xml_node node) {
        return std::string_view(node.name()) == "status" && xml::attribute(node, "type") == state;
    });
}

bool takesTexts(const QString& state)
{
    static const QStringList states = {QStringLiteral("Away"), QStringLiteral("Extended away"),
                                       QStringLiteral("Available"), QStringLiteral("Do not disturb"),
                                       QStringLiteral("Free for Chat")};
    return states.contains(state);
}

} // namespace

StatusLibrary::StatusLibrary()
    : file_(paths::configFolder() + QStringLiteral("/StatusMsgs.xml"), "breloim", firstContent)
{
}

QStringList StatusLibrary::states() const
{
    QStringList found;
    pugi::xml_document document;
    if (file_.read(document).isEmpty())
        for (const auto status : document.document_element().children("status"))
            found += xml::attribute(status, "type");
    return found;
}

QStringList StatusLibrary::messages(const QString& state) const
{
    QStringList found;
    pugi::xml_document document;
    if (file_.read(document).isEmpty())
        for (const auto message : statusOf(document, state).children("message"))
            found += xml::text(message);
    return found;
}

QString StatusLibrary::add(const QString& state, const QString& text) const
{
    pugi::xml_document document;
    const QString error = file_.read(document);
    if (!error.isEmpty())
        return error;
    auto status = statusOf(document, state);
    if (!takesTexts(state) || !status)
        return QCoreApplication::translate("StatusLibrary", "No messages can be added to this status.");
    status.append_child("message").text().set(text.toUtf8().constData());
    return file_.write(document);
}

QString StatusLibrary::remove(const QString& state, int index) const
{
    pugi::xml_document document;
    const QString error = file_.read(document);
    if (!error.isEmpty())
        return error;
    auto status = statusOf(document, state);
    const auto messages = status.children("message");
    if (index >= 0 && index < std::distance(messages.begin(), messages.end()))
        status.remove_child(*std::next(messages.begin(), index));
    return file_.write(document);
}

QString* StatusLibrary::current(Client& client, const QString& state)
{
    const std::pair<const char*, QString*> texts[] = {
        {"Available", &client.settings.StatusAv},        {"Away", &client.settings.StatusAway},
        {"Extended away", &client.settings.StatusXAway}, {"Do Not Disturb", &client.settings.StatusDND},
        {"Free for Chat", &client.FreeForChatMsg},
    };
    for (const auto& [name, text] : texts)
        if (state == QLatin1String(name))
            return text;
    return nullptr;
}

void StatusLibrary::choose(Client& client, const QString& state, const QString& text)
{
    if (QString* chosen = current(client, state))
        *chosen = text;
}
