#include "sandbox/StreamReader.h"

namespace sandbox
{

void StreamReader::feed(const QByteArray& bytes)
{
    text_ += decoder_(bytes);
    xml_.addData(bytes);
}

StreamReader::Event StreamReader::next()
{
    for (;;) {
        Event event = Event::None;
        switch (xml_.readNext()) {
        case QXmlStreamReader::Invalid:
            return xml_.error() == QXmlStreamReader::PrematureEndOfDocumentError ? Event::None
                                                                                 : Event::Broken;
        case QXmlStreamReader::StartElement:
            event = started();
            break;
        case QXmlStreamReader::EndElement:
            event = ended();
            break;
        case QXmlStreamReader::Characters:
            if (depth_ == 1 && !xml_.isWhitespace()) // between stanzas it only keeps the line alive
                return Event::Broken;
            break;
        case QXmlStreamReader::StartDocument:
            break;
        default:
            return Event::Broken;
        }
        if (event != Event::None)
            return event;
    }
}

StreamReader::Event StreamReader::started()
{
    if (++depth_ != 1)
        return Event::None;
    raw_ = taken().toUtf8();
    host_ = xml_.attributes().value(QLatin1String("to")).toString();
    const bool isStream =
        xml_.name() == u"stream" && xml_.namespaceUri() == u"http://etherx.jabber.org/streams";
    return isStream ? Event::Opened : Event::Broken;
}

StreamReader::Event StreamReader::ended()
{
    if (--depth_ == 0)
        return Event::Closed;
    if (depth_ > 1)
        return Event::None;
    raw_ = taken().toUtf8().trimmed();
    return Event::Stanza;
}

// What was read since the last call. Exact only behind a tag: behind text the reader has looked ahead.
QString StreamReader::taken()
{
    const auto length = xml_.characterOffset() - takenTo_;
    QString text = text_.left(length);
    text_.remove(0, length);
    takenTo_ += length;
    return text;
}

} // namespace sandbox
