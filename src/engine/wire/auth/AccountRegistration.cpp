#include "engine/wire/auth/AccountRegistration.h"

#include "engine/StanzaError.h"
#include "engine/Xml.h"
#include "engine/bridge/queries/DataForm.h"

#include <string_view>

namespace
{

constexpr const char* getId = "brelo-register1";
constexpr const char* setId = "brelo-register2";

bool isField(pugi::xml_node node)
{
    const std::string_view name = node.name();
    return node.type() == pugi::node_element && !node.attribute("xmlns") && name != "instructions" &&
           name != "registered";
}

// What the server wants a person to read when its questions are more than this client can answer.
QString instructions(pugi::xml_node query)
{
    QString text = xml::text(query.child("instructions")).trimmed();
    for (const auto x : query.children("x")) {
        const auto more =
            xml::text(x.child(xml::xmlns(x) == "jabber:x:oob" ? "url" : "instructions")).trimmed();
        if (!more.isEmpty() && !text.contains(more))
            text += (text.isEmpty() ? QString() : QStringLiteral(" ")) + more;
    }
    return text;
}

} // namespace

AccountRegistration::AccountRegistration(AuthRequest request, const QByteArray& clientStanza)
    : request_(std::move(request)),
      id_(QStringLiteral("VRX_new")), values_{{QStringLiteral("username"), request_.user},
                                              {QStringLiteral("password"), request_.password}}
{
    const auto document = xml::parsed(QString::fromUtf8(clientStanza));
    if (!document)
        return;
    const auto iq = document->document_element();
    if (iq.attribute("id"))
        id_ = xml::attribute(iq, "id");
    for (const auto field : iq.child("query").children()) {
        const auto value = xml::text(field);
        if (field.type() == pugi::node_element && !value.isEmpty())
            values_.insert(QString::fromUtf8(field.name()), value);
    }
}

void AccountRegistration::streamOpened(pugi::xml_node)
{
    // The features needn't announce registration: a server may speak it all the same.
    if (step_ != Step::Idle || state_ == State::Done)
        return;
    if (!request_.mayUse(Proof::None) || !request_.mayShowPassword())
        return finishWithError(406, tr("The connection is not encrypted, so the password was not sent."));
    step_ = Step::Asking;
    output_ << QStringLiteral(
                   "<iq type=\"get\" id=\"%1\" to=\"%2\"><query xmlns=\"jabber:iq:register\"/></iq>")
                   .arg(QLatin1String(getId), xml::escaped(request_.domain))
                   .toUtf8();
}

void AccountRegistration::feed(const Stanza& element)
{
    if (state_ == State::Done || step_ == Step::Idle || element.kind() != Stanza::Kind::Iq)
        return;
    const auto iq = element.root();
    if (std::string_view(iq.attribute("id").value()) != (step_ == Step::Asking ? getId : setId))
        return;
    const std::string_view type = iq.attribute("type").value();
    if (type == "error") {
        const auto error = StanzaError::of(iq);
        finishWithError(error.code, error.sentence());
    } else if (type == "result" && step_ == Step::Asking) {
        fieldsArrived(iq.child("query"));
    } else if (type == "result") {
        succeed();
    }
}

void AccountRegistration::fieldsArrived(pugi::xml_node query)
{
    QString answer = formAnswer(query);
    if (answer.isEmpty())
        answer = flatAnswer(query);
    if (answer.isEmpty()) {
        const auto text = instructions(query);
        return finishWithError(406, text.isEmpty() ? tr("The server does not let this program make accounts.")
                                                   : text);
    }
    step_ = Step::Setting;
    output_ << QStringLiteral(
                   "<iq type=\"set\" id=\"%1\" to=\"%2\"><query xmlns=\"jabber:iq:register\">%3</query></iq>")
                   .arg(QLatin1String(setId), xml::escaped(request_.domain), answer)
                   .toUtf8();
}

// The form with what is known filled in; empty when there is none, or when it asks for more.
QString AccountRegistration::formAnswer(pugi::xml_node query) const
{
    auto form = DataForm::in(query);
    if (!form)
        return {};
    for (auto& field : form->fields) {
        if (field.type != QLatin1String("hidden") && values_.contains(field.var))
            field.values = {values_.value(field.var)};
    }
    return form->missing() || !form->find(QStringLiteral("username")) ? QString() : form->submission();
}

// Every field goes back, also those with nothing to say (XEP-0077, 3.1.1); a server's <key/> as it came.
QString AccountRegistration::flatAnswer(pugi::xml_node query) const
{
    if (!query.child("username"))
        return {};
    QString answer;
    for (const auto field : query.children()) {
        if (!isField(field))
            continue;
        const auto name = QString::fromUtf8(field.name());
        answer +=
            QStringLiteral("<%1>%2</%1>").arg(name, xml::escaped(values_.value(name, xml::text(field))));
    }
    return answer;
}

void AccountRegistration::fail(const QString& reason)
{
    if (state_ == State::Working)
        finishWithError(503, reason);
}

void AccountRegistration::succeed()
{
    state_ = State::Done;
    result_ = Stanza::fromXml(QStringLiteral("<iq type=\"result\" id=\"%1\" from=\"%2\"/>")
                                  .arg(xml::escaped(id_), xml::escaped(request_.domain)));
}

void AccountRegistration::finishWithError(int code, const QString& text)
{
    state_ = State::Done;
    result_ = Stanza::fromXml(
        QStringLiteral("<iq type=\"error\" id=\"%1\" from=\"%2\"><error code=\"%3\">%4</error></iq>")
            .arg(xml::escaped(id_), xml::escaped(request_.domain), QString::number(code),
                 xml::escaped(text)));
}
