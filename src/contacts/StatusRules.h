#pragma once

#include <QString>

#include <array>

class CRoster;
struct Client;

// The five statuses that a person can choose and announce.
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
// The picture of a contact that announces itself by this show word; empty for an unknown one.
QString StatusImageKey(const QString& show);
// The picture for the status of the contact with this JID, as the list has it.
QString FindStatusImg(const CRoster& roster, const QString& JID);
// The text that goes with the status; `automatic` when it was set because the person is idle.
QString text(StatusCommand command, const Client& client, bool automatic);
// The presence that announces it.
QString presence(StatusCommand command, const Client& client, bool automatic);

} // namespace statusrules
