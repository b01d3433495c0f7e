#include "desktop/forms/QtFileDialogs.h"

#include <QApplication>
#include <QFileDialog>

QString QtFileDialogs::openFile(const QString& title, const QString& filter)
{
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), title, QString(), filter);
}
