#include "preferences/forms/EmptyPanel.h"

#include <QLabel>
#include <QVBoxLayout>

EmptyPanel::EmptyPanel(Client& client) : PreferencePanel(client)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(tr("Not Implemented Yet"), this), 0, Qt::AlignTop);
}
