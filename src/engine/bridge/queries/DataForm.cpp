#include "engine/bridge/queries/DataForm.h"

#include "engine/Xml.h"

#include <algorithm>

namespace
{

DataForm::Field read(pugi::xml_node node)
{
    DataForm::Field field{
        xml::attribute(node, "var"), xml::attribute(node, "type"), bool(node.child("required")), {}};
    for (const auto value : node.children("value"))
        field.values << xml::text(value);
    return field;
}

} // namespace

std::optional<DataForm> DataForm::in(pugi::xml_node query)
{
    for (const auto x : query.children("x")) {
        if (xml::xmlns(x) != "jabber:x:data")
            continue;
        DataForm form;
        for (const auto node : x.children("field")) {
            auto field = read(node);
            if (!field.var.isEmpty() && field.type != QLatin1String("fixed"))
                form.fields << std::move(field);
        }
        return form;
    }
    return std::nullopt;
}

DataForm::Field* DataForm::find(const QString& var)
{
    const auto found =
        std::find_if(fields.begin(), fields.end(), [&](const Field& f) { return f.var == var; });
    return found == fields.end() ? nullptr : &*found;
}

const DataForm::Field* DataForm::missing() const
{
    const auto found = std::find_if(fields.begin(), fields.end(), [](const Field& field) {
        return field.required && field.values.join(QString()).isEmpty();
    });
    return found == fields.end() ? nullptr : &*found;
}

QString DataForm::submission() const
{
    QString text = QStringLiteral("<x xmlns=\"jabber:x:data\" type=\"submit\">");
    for (const auto& field : fields) {
        text += QStringLiteral("<field var=\"%1\">").arg(xml::escaped(field.var));
        for (const auto& value : field.values)
            text += QStringLiteral("<value>%1</value>").arg(xml::escaped(value));
        text += QStringLiteral("</field>");
    }
    return text + QStringLiteral("</x>");
}
