#pragma once

#include <QByteArray>
#include <QString>

namespace richtext
{

// `text` as a document of the Rich Text Format, pure ASCII. Lines end with a line feed.
QByteArray document(const QString& text);

} // namespace richtext
