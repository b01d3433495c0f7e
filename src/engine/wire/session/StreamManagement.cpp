#include "engine/wire/session/StreamManagement.h"

#include "engine/Xml.h"

namespace
{

constexpr std::string_view managementNamespace = "urn:xmpp:sm:3";
constexpr int stanzasARequest = 10;

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
    if (enabled_ && ++sinceRequest_ >= stanzasARequest) {
        output_ += request();
        sinceRequest_ = 0;
    }
}

void StreamManagement::acknowledged(quint32 count)
{
    const quint32 news = count - acknowledged_;
    if (news > unacknowledged_.size())
        return; // It can't have received what was not sent.
    unacknowledged_.erase(unacknowledged_.begin(), unacknowledged_.begin() + news);
    acknowledged_ = count;
}

QByteArray StreamManagement::resumeRequest() const
{
    return counted("resume", received_) + " previd=\"" + xml::escaped(id_).toUtf8() + "\"/>";
}

void StreamManagement::resumed(const Stanza& element)
{
    acknowledged(element.root().attribute("h").as_uint());
    output_.clear();
    for (const auto& stanza : unacknowledged_)
        output_ += stanza;
    if (!unacknowledged_.empty())
        output_ += request();
    sinceRequest_ = 0;
}
