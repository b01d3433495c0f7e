#pragma once

#include "services/SearchStanzas.h"

#include <QWidget>

#include <vector>

class QFormLayout;
class QLabel;
class QLineEdit;

// The fields by which a directory can be searched, as it named them: labels and boxes in pairs, counted from
// 1. The pair at 0 is a template and never shown.
class SearchFields : public QWidget
{
    Q_OBJECT

public:
    explicit SearchFields(QWidget* parent = nullptr);

    // In place of the fields before. One whose name can't be sent back stands there all the same. Tab comes
    // to them one by one.
    void setFields(const QList<searchstanzas::Field>& fields);

    // The highest index of a pair.
    int FieldCount() const { return int(pairs_.size()) - 1; }
    QString GetFieldName(int index) const { return pairs_.at(std::size_t(index)).name; }
    QString GetFieldValue(int index) const;
    // Puts the caret into the first box that can be filled in.
    void enter() const;

private:
    struct Pair {
        QString name; // as the directory wrote it
        QLabel* label;
        QLineEdit* text;
    };

    void load(const searchstanzas::Field& field);

    QFormLayout* rows_;
    std::vector<Pair> pairs_;
};
