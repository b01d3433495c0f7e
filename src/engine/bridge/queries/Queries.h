#pragma once

#include "engine/bridge/Translator.h"

// The translators of iq requests, the client's and others', and of errors.
namespace queries
{

std::shared_ptr<Translator> agents();
std::shared_ptr<Translator> errors();
std::shared_ptr<Translator> peerIds();
std::shared_ptr<Translator> peerRequests();
std::shared_ptr<Translator> refusals();
std::shared_ptr<Translator> roster();
std::shared_ptr<Translator> supportedNamespaces();
std::shared_ptr<Translator> vCards();

} // namespace queries
