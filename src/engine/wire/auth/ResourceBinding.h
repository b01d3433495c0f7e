#pragma once

#include "engine/wire/auth/AuthPhase.h"
#include "engine/wire/auth/AuthRequest.h"

#include <QCoreApplication>

// Resource binding (RFC 6120, 7) on an authenticated stream, and the session of RFC 3921 where a server
// insists on it. A resource that the server won't have gives way to one of its own choice.
class ResourceBinding : public AuthPhase
{
    Q_DECLARE_TR_FUNCTIONS(ResourceBinding)

public:
    ResourceBinding(const QString& resource, pugi::xml_node features);
    void feed(const Stanza& element) override;

private:
    enum class Step { Binding, BindingAnyResource, Session };

    void bind(const QString& resource);
    void answered(pugi::xml_node iq);
    void refused(pugi::xml_node iq);

    Step step_ = Step::Binding;
    bool wantsSession_ = false;
    QString jid_;
};
