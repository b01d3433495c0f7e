#include "sandbox/demo/Cast.h"

#include "sandbox/Address.h"

namespace sandbox::demo
{
namespace
{

struct Member {
    const char* node;
    const char* name;
    const char* group; // null for someone who is only in the directory
    const char* show;  // null for offline
    const char* status;
};

constexpr Member Members[] = {
    {"eva", "Eva Lindqvist", "Friends", "", "Say something, I answer"},
    {"tomas", "Tomas Arkwright", "Friends", "chat", "Free for a chat"},
    {"lucia", "Lucia Ferrandi", "Friends", "away", "Out for a coffee"},
    {"henrik", "Henrik Solberg", "Friends", nullptr, ""},
    {"nadia", "Nadia Kovalenko", "Work", "dnd", "In a meeting"},
    {"piet", "Piet van Dorn", "Work", "", "At my desk"},
    {"grace", "Grace Okonjo", "Work", "xa", "Back on Monday"},
    {"anselm", "Anselm & Sons", "Work", "", "Quotes < 24 h"},
    {"rosa", "Rosa Benedetti", "Family", "", ""},
    {"walter", "Uncle Walter", "Family", nullptr, ""},
    {"judith", "Judith Marlow", "Family", "away", "In the garden"},
    {"oskar", "Oskar Bright", "", "", "New here"},
    {"mirko", "Mirko Valente", nullptr, "", "Looking for old friends"},
    {"ines", "Ines Cardoso", nullptr, "", ""},
    {"bruno", "Bruno Castell", nullptr, nullptr, ""},
    {"yuki", "Yuki Tanabe", nullptr, "", ""},
};

void add(World& world, const Member& member)
{
    const QString node = QLatin1String(member.node);
    const QString name = QLatin1String(member.name);
    Persona& persona = member.group ? world.addContact(User, node, name, QLatin1String(member.group))
                                    : world.addPersona(node, name);
    persona.email = node + QStringLiteral("@post.example");
    persona.online = member.show != nullptr;
    persona.show = QLatin1String(member.show);
    persona.status = QLatin1String(member.status);
}

} // namespace

void populate(World& world)
{
    world.addAccount(User, QStringLiteral("demo"), true);
    for (const auto& member : Members)
        add(world, member);
    Room& garden = world.addRoom(Garden, QStringLiteral("The Garden"));
    garden.seat(FirstTalker);
    garden.seat(SecondTalker);
    world.addRoom(QStringLiteral("workshop"), QStringLiteral("Workshop"));
    world.addGateway(QStringLiteral("msn"), QStringLiteral("MSN Gateway"), QStringLiteral("msn"));
    world.addGateway(QStringLiteral("icq"), QStringLiteral("ICQ Gateway"), QStringLiteral("icq"));
    // Who comes with a registration.
    world.addPersona(QStringLiteral("nina@msn.") + Host, QStringLiteral("Nina Larsson")).online = true;
    world.addPersona(QStringLiteral("vera@msn.") + Host, QStringLiteral("Vera Blum"));
}

} // namespace sandbox::demo
