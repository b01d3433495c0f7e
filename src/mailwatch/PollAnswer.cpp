#include "mailwatch/PollAnswer.h"

#include <QXmlStreamReader>

#include <optional>

namespace
{

// The text of the first element "a:status", empty for none; null when the text can't be read as XML. The
// strict reader: what pugixml forgives, such as text around the document, would pass for an answer.
std::optional<QString> firstStatus(const QString& text)
{
    QXmlStreamReader reader(text);
    std::optional<QString> status;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::DTD)
            return std::nullopt;
        if (token == QXmlStreamReader::StartElement && !status && reader.qualifiedName() == u"a:status")
            status = reader.readElementText(QXmlStreamReader::IncludeChildElements);
    }
    return reader.hasError() ? std::nullopt : std::optional(status.value_or(QString()));
}

} // namespace

PollResult pollResult(int status, const QString& text)
{
    constexpr int preconditionFailed = 412;
    if (status == preconditionFailed || text.contains(u"Precondition Failed"))
        return PollResult::RunOut;
    if (text.isEmpty())
        return PollResult::Nothing;
    const auto first = firstStatus(text);
    const bool isNew = first && *first != u"HTTP/1.1 204 No Content" && text.contains(u"200 OK");
    return isNew ? PollResult::NewMail : PollResult::Nothing;
}
