#pragma once

#include "messaging/InboundDecision.h"

#include <QString>

class CAgents;
struct Settings;
struct SiteData;

// The rules of the inbound road.
namespace inbound
{

InboundDecision decide(const InboundMessage& message, const InboundWorld& world, const Settings& settings);

// Whether `bare` is the server, one of the product's own servers when connected to one of them, or a service.
bool isServerNotice(const QString& bare, const QString& server, const CAgents& agents, const SiteData& site);

QString balloonTitle(const QString& from);
QString balloonText(const QString& body);
QString roomBalloonTitle(const QString& from);
QString roomBalloonText(const QString& body);

} // namespace inbound
