#pragma once

#include <QByteArray>
#include <QString>
#include <pugixml.hpp>

// A small XML document of the person's own. UTF-8, readable by its owner only, and written whole or not at
// all: a kill at any moment leaves the old file or the new one.
//
// Operations yield an empty text, or a sentence for the person about what went wrong. A file that can't be
// understood is never written over.
class XmlFile
{
public:
    // `initial` is what a missing file is made with; its root element is named `root`.
    XmlFile(QString file, QByteArray root, QByteArray initial);

    // Reads the document, with its comments and white space. A missing file is made.
    QString read(pugi::xml_document& document) const;
    QString write(pugi::xml_document& document) const;

    // Keeps a file that can't be understood beside it, under the ending ".damaged", and begins a new one.
    // Yields a sentence for the person, or an empty text where nothing was amiss.
    QString renew() const;

    const QString& fileName() const { return file_; }

private:
    QString create() const;
    bool parse(const QByteArray& bytes, pugi::xml_document& document) const;
    QString writeText(const QByteArray& text) const;

    QString file_;
    QByteArray root_;
    QByteArray initial_;
};
