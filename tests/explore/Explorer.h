#pragma once

#include "StanzaMaker.h"
#include "WireGateway.h"
#include "support/FakeClient.h"

#include <QFile>

// Somebody who uses the whole client without sense: odd stanzas, answers, losses, commands, clicks and keys
// in the order that the seed gives. What was done stands in the journal, a line each, also after a crash.
class Explorer : public QObject
{
    Q_OBJECT

public:
    Explorer(quint32 seed, const QString& journal);
    ~Explorer() override;

    void step();
    // The client was told to exit.
    bool isOver() const { return client_->client.UserClosing; }
    // What must never be, whatever was done before; empty when all is well.
    QString fault();
    // Signs in anew and takes a message: the faults of a client that has got stuck, empty when it hasn't.
    QString faultOfNewSession();

private:
    void write(const QString& what);
    QList<Form*> windows() const;
    Form* window();
    void settle();
    void preset();
    template <typename Control, typename Fits>
    Control* any(const Fits& fits);
    void askMenu(QWidget* control, const QPoint& at);
    void answerNested();

    void signIn();
    void sayStanza();
    void sayAnswer();
    void changeLink();
    void choose();
    void click();
    void key();
    void typeText();
    void row();
    void moveWindow();
    void tray();
    void passTime();

    QRandomGenerator random_;
    StanzaMaker maker_;
    QFile journal_;
    QtMessageHandler before_ = nullptr;
    WireGateway* gateway_ = nullptr;
    std::unique_ptr<FakeClient> client_;
    QStringList requests_;
    QString badWire_;
    qint64 now_ = 0;
    int depth_ = 0;
    int nested_ = 0;
};
