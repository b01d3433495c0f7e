#include "desktop/Desktop.h"

#include <QCoreApplication>

QString FileDialogs::ChooseWaveFile()
{
    return openFile(QCoreApplication::translate("FileDialogs", "Please Choose a WAV File"),
                    QCoreApplication::translate("FileDialogs", "Wave Files (*.wav)"));
}
