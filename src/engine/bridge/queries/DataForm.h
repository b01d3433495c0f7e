#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <pugixml.hpp>

#include <optional>

// A data form (XEP-0004) that is to be filled in.
struct DataForm {
    struct Field {
        QString var;
        QString type;
        bool required = false;
        QStringList values;
    };

    // The form among the children of `query`, if there is one.
    static std::optional<DataForm> in(pugi::xml_node query);

    Field* find(const QString& var);
    // The first required field that is still empty; null when the form may be submitted.
    const Field* missing() const;
    // The form as <x type="submit"/>, with what every field holds now.
    QString submission() const;

    QList<Field> fields;
};
