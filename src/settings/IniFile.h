#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// An INI file as sections, keys and texts, read whole at its making. Names are found without regard to case.
// It is written atomically, and only its owner can read it.
class IniFile
{
public:
    explicit IniFile(QString file);

    // A server's or an account's text as a key: hosts know no case, and nothing in it may act as a separator.
    static QString keyOf(const QString& text);

    // The file is there but can't be read, or has lines that are none of an INI file: it was cut or
    // overwritten.
    bool isDamaged() const { return damaged_; }

    // Something else than a file stands there, such as a folder, a device or a pipe, which may keep a reader
    // waiting for ever. It is neither read nor written.
    bool isNoFile() const;

    // A copy of the file beside it, under the ending ".damaged", as its owner's only. False when there is
    // none.
    bool keepCopy() const;

    std::optional<QString> read(const QString& section, const QString& key) const;
    // The keys of a section that have a text, in order.
    QStringList keys(const QString& section) const;
    void write(const QString& section, const QString& key, const QString& text);
    void remove(const QString& section, const QString& key);
    // Brings the changes to the file. A damaged file is kept beside it under the ending ".damaged". False
    // when the file could not be written, or may not be.
    bool save();

private:
    struct Entry {
        QString path; // section/key in its first spelling
        QString text; // null when removed
    };

    void load();
    Entry& changed(const QString& section, const QString& key);
    bool setAside();
    bool prepareFile();

    QString aside() const { return file_ + QStringLiteral(".damaged"); }

    QString file_;
    bool damaged_ = false;
    QHash<QString, Entry> entries_; // by folded path
    QList<QString> changes_;        // folded paths, in order
};
