#include "engine/wire/session/StreamManagement.h"

#include "engine/Xml.h"

namespace
{

constexpr std::string_view managementNamespace = "urn:xmpp:sm:3";
constexpr int stanzasARequest = 10;
// Bytes kept for a server that acknowledges nothing.
constexpr qsizetype mostKept = 8 * 1024 * 1024;

QByteArray counted(const char* name, quint32 count)
{
    return QByteArrayLiteral("<") + name + " xmlns=\"urn:xmpp:sm:3\" h=\"" + QByteArray::number(count) + "\"";
}

} // namespace

void StreamManagement::begin()
{
    *this = {};
}

QByteArray StreamManagement::enable()
{
    counting_ = true;
    return QByteArrayLiteral("<enable xmlns=\"urn:xmpp:sm:3\" resume=\"true\"/>");
}

bool StreamManagement::handle(const Stanza& element)
{
    const auto root = element.root();
    if (xml::xmlns(root) != managementNamespace)
        return false;
    const std::string_view name = root.name();
    if (name == "enabled" && counting_) {
        enabled_ = true;
        received_ = 0;
        if (root.attribute("resume").as_bool())
            id_ = xml::attribute(root, "id");
    } else if (name == "failed") {
        begin();
    } else if (name == "r" && enabled_) {
        output_ += counted("a", received_) + "/>";
    } else if (name == "a" && root.attribute("h")) {
        acknowledged(root.attribute("h").as_uint());
    }
    return true;
}

void StreamManagement::received()
{
    if (enabled_)
        ++received_;
}

void StreamManagement::sent(const QByteArray& stanza)
{
    if (!counting_)
        return;
    unacknowledged_.push_back(stanza);
    keptBytes_ += stanza.size();
    // What is no longer kept can't be sent anew, so there is nothing to take up then.
    for (; keptBytes_ > mostKept; ++acknowledged_) {
        id_.clear();
        forgetFirst();
    }
    // What a person wrote is asked after at once: should the link be lost, few are in doubt.
    const bool isWords = stanza.startsWith("<message");
    if (enabled_ && (++sinceRequest_ >= stanzasARequest || isWords)) {
        output_ += request();
        sinceRequest_ = 0;
    }
}

void StreamManagement::forgetFirst()
{
    keptBytes_ -= unacknowledged_.front().size();
    unacknowledged_.pop_front();
}

void StreamManagement::acknowledged(quint32 count)
{
    const quint32 news = count - acknowledged_;
    if (news > unacknowledged_.size())
        return; // It can't have received what was not sent.
    for (; acknowledged_ != count; ++acknowledged_)
        forgetFirst();
}

QByteArray StreamManagement::resumeRequest() const
{
    return counted("resume", received_) + " previd=\"" + xml::escaped(id_).toUtf8() + "\"/>";
}

void StreamManagement::answered(const Stanza& element)
{
    if (const auto count = element.root().attribute("h"))
        acknowledged(count.as_uint());
}

void StreamManagement::resumed(const Stanza& element)
{
    answered(element);
    output_.clear();
    for (const auto& stanza : unacknowledged_)
        output_ += stanza;
    if (!unacknowledged_.empty())
        output_ += request();
    sinceRequest_ = 0;
}
