#pragma once

#include <QString>

#include <array>

struct Client;

// The five statuses that the person can choose.
enum class StatusCommand { Available, Away, XAway, DND, FFC };

// What belongs to each of them.
struct StatusRule {
    StatusCommand command;
    const char* label;    // untranslated; context "StatusRules"
    const char* show;     // the presence's show word
    const char* imageKey; // the picture
    const char* menuItem; // its entry in the Status menu
};

namespace statusrules
{

const std::array<StatusRule, 5>& all();
const StatusRule& of(StatusCommand command);
QString label(StatusCommand command);
// The text that goes with the status; `automatic` when it was set because the person is idle.
QString text(StatusCommand command, const Client& client, bool automatic);
// The presence that announces it.
QString presence(StatusCommand command, const Client& client, bool automatic);

} // namespace statusrules
