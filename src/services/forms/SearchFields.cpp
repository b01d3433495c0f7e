#include "services/forms/SearchFields.h"

#include "engine/Xml.h"
#include "messaging/LongLines.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace
{

constexpr qsizetype longestCaption = 40; // characters

} // namespace

SearchFields::SearchFields(QWidget* parent)
    : QWidget(parent),
      rows_(new QFormLayout(this)), pairs_{{QString(), new QLabel(tr(" Add the search fields"), this),
                                            new QLineEdit(this)}}
{
    pairs_[0].label->setObjectName(QStringLiteral("LblInstruction"));
    pairs_[0].text->setObjectName(QStringLiteral("Text1"));
    pairs_[0].label->hide();
    pairs_[0].text->hide();
    rows_->setContentsMargins({});
    rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
}

void SearchFields::setFields(const QList<searchstanzas::Field>& fields)
{
    while (rows_->rowCount() > 0)
        rows_->removeRow(0);
    pairs_.resize(1);
    for (const auto& field : fields)
        load(field);
}

void SearchFields::load(const searchstanzas::Field& field)
{
    const QString number = u'_' + QString::number(pairs_.size());
    const bool isLong = field.name.size() > longestCaption;
    const QString caption = isLong ? field.name.left(longestCaption) + QStringLiteral("...") : field.name;
    const bool isSendable = xml::isElementName(field.name);
    auto* label = new QLabel(isSendable ? caption : tr("%1 (can't be sent)").arg(caption));
    label->setObjectName(pairs_[0].label->objectName() + number);
    label->setTextFormat(Qt::PlainText);
    auto* text = new QLineEdit(field.value.left(longlines::Cutter().take(field.value)));
    text->setObjectName(pairs_[0].text->objectName() + number);
    text->setCursorPosition(0);
    text->setEnabled(isSendable);
    label->setBuddy(text);
    rows_->addRow(label, text);
    label->show();
    text->show();
    setTabOrder(pairs_.back().text, text);
    pairs_.push_back({field.name, label, text});
}

QString SearchFields::GetFieldValue(int index) const
{
    return pairs_.at(std::size_t(index)).text->text();
}

void SearchFields::enter() const
{
    for (int index = 1; index <= FieldCount(); ++index) {
        auto* text = pairs_[std::size_t(index)].text;
        if (text->isEnabled())
            return text->setFocus();
    }
}
