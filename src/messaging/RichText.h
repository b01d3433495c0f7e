#pragma once

#include <QByteArray>
#include <QString>

namespace richtext
{

// `text` as a document of the Rich Text Format, pure ASCII. Lines may end with a line feed or a paragraph
// separator.
QByteArray document(const QString& text);

} // namespace richtext
