#pragma once

#include "settings/Settings.h"

#include <QString>

#include <span>
#include <variant>

struct SiteData;

// One key of the settings file: where it stands, what it reads into, and its values as text.
struct SettingKey {
    using Member = std::variant<std::monostate, bool Settings::*, int Settings::*, double Settings::*,
                                QString Settings::*>;

    enum Use : unsigned char {
        Both,      // read at start, written at exit
        ReadOnly,  // never written
        WriteOnly, // never read
        Secret,    // read and written only when the person wants the password kept
    };

    // The spelling that reads the key.
    const char* section;
    const char* key;
    Member member;
    const char* missing; // what a missing key reads as
    const char* reset;   // null: a reset leaves the member alone
    Use use = Both;
    // The spelling that writes the key, where it differs. Spellings that differ in case alone name the same
    // key.
    const char* writtenSection = nullptr;
    const char* writtenKey = nullptr;

    // The value of the column `text` once the names of places in it are filled in.
    static QString filled(const char* text, const SiteData& site);
    // Puts a text into the member. False when the member's type can't be read from it; then it stays.
    bool put(Settings& settings, const QString& text) const;
    QString text(const Settings& settings) const;
};

// All keys in the order in which they are read and written.
std::span<const SettingKey> settingKeys();
