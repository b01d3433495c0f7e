#include "services/forms/SearchUsrCtrl.h"

#include "contacts/Client.h"
#include "engine/StanzaError.h"
#include "messaging/LongLines.h"
#include "services/SearchAnswers.h"
#include "services/forms/AnswerWait.h"
#include "settings/Paths.h"
#include "ui_SearchUsrCtrl.h"

namespace
{

constexpr qsizetype longestInstructions = 4000; // characters that are shown
constexpr int mostLines = 100;
constexpr qsizetype longestAddress = 200;
constexpr qsizetype longestState = 250;

// Of a text that somebody else wrote, what a label takes.
QString shown(const QString& text)
{
    QStringList lines;
    for (const auto& line :
         text.left(longlines::shownLength(text, longestInstructions, mostLines)).split(u'\n'))
        lines += longlines::shownLine(line);
    return lines.join(u'\n').trimmed();
}

} // namespace

SearchUsrCtrl::SearchUsrCtrl(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::SearchUsrCtrl>())
{
    ui_->setupUi(this);
    ui_->lblConnecting->hide();
    ui_->Image1->hide();
    ui_->LblInstructions->hide();
    showState({});
    connect(ui_->SResultGrid, &ResultGrid::chosen, this, [this](const QString& jid) {
        SelectedJID = jid;
        emit chosen();
    });
    connect(ui_->SResultGrid, &ResultGrid::addRequested, this, &SearchUsrCtrl::addRequested);
    connect(ui_->SResultGrid, &ResultGrid::messageRequested, this, &SearchUsrCtrl::messageRequested);
}

SearchUsrCtrl::~SearchUsrCtrl() = default;

void SearchUsrCtrl::setClient(const Client& client)
{
    client_ = &client;
    ui_->Image1->setBoxes(client.desktop.boxes);
    wait_ = new AnswerWait(client, this);
    connect(wait_, &AnswerWait::late, this, [this] {
        showState(tr("The directory has not answered yet. You can go on waiting, or ask again."));
    });
    connect(wait_, &AnswerWait::connectionLost, this, [this] {
        stopWaiting();
        showState(tr("You are not connected any more."));
    });
}

int SearchUsrCtrl::FieldCount() const
{
    return ui_->fields->FieldCount();
}

QString SearchUsrCtrl::GetFieldName(int index) const
{
    return ui_->fields->GetFieldName(index);
}

QString SearchUsrCtrl::GetFieldValue(int index) const
{
    return ui_->fields->GetFieldValue(index);
}

void SearchUsrCtrl::StartWaiting()
{
    wait_->begin();
    showState({});
    ui_->lblConnecting->show();
    ui_->Image1->show();
    // The last, since it may show a box.
    ui_->Image1->Start(paths::applicationFolder() + QStringLiteral("/connect.gif"));
}

void SearchUsrCtrl::stopWaiting()
{
    wait_->end();
    ui_->Image1->Stop();
    ui_->Image1->hide();
    ui_->lblConnecting->hide();
}

void SearchUsrCtrl::expectForm(const QString& directory)
{
    directory_ = directory;
    expectsForm_ = true;
    searches_ = 0;
    ui_->lblDescr->setText(directory.left(longestAddress));
    ui_->lblDescr->setToolTip(directory.left(longestAddress).toHtmlEscaped());
    ui_->LblInstructions->hide();
    ui_->fields->setFields({});
    ui_->SResultGrid->showResults({}, {});
    StartWaiting();
}

void SearchUsrCtrl::expectResults()
{
    ++searches_;
    StartWaiting();
}

void SearchUsrCtrl::showState(const QString& text)
{
    const bool isLong = text.size() > longestState;
    ui_->lblState->setText(isLong ? text.left(longestState) + QStringLiteral("...") : text);
    ui_->lblState->setToolTip(isLong ? text.toHtmlEscaped() : QString());
    ui_->lblState->setVisible(!text.isEmpty());
}

// An answer that another directory gave late is for nobody any more.
bool SearchUsrCtrl::isFromDirectory(const Stanza& answer) const
{
    const QString from = answer.From();
    return (from.isEmpty() ? client_->Gateway().Server() : from).compare(directory_, Qt::CaseInsensitive) ==
           0;
}

void SearchUsrCtrl::OnIQ(PlugInContext& context)
{
    const auto& answer = context.Stanza();
    const QString id = answer.IqFields().Id();
    const bool isForm = id == u"VRX_SEARCH_INIT" && expectsForm_;
    const bool isResult = id == u"VRX_SEARCH_RESULT" && searches_ > 0;
    if (!(isForm || isResult) || !isFromDirectory(answer))
        return;
    stopWaiting();
    showState({});
    isForm ? showForm(answer) : showResults(answer);
}

void SearchUsrCtrl::showForm(const Stanza& answer)
{
    expectsForm_ = false;
    const auto form = searchanswers::form(answer);
    const QString instructions = shown(form.instructions);
    ui_->LblInstructions->setText(instructions);
    ui_->LblInstructions->setVisible(!instructions.isEmpty());
    ui_->fields->setFields(form.fields);
    ui_->fields->enter();
    shareRoom();
    if (answer.IqFields().Type() == u"error")
        return showState(
            tr("The directory can't be searched: %1").arg(StanzaError::of(answer.root()).sentence()));
    if (form.fields.isEmpty())
        showState(tr("The directory names nothing to search by."));
    else if (form.leftOut > 0)
        showState(tr("The directory names %1 more fields, which are not shown.").arg(form.leftOut));
    emit formCame();
}

// The fields get what they need, as long as some rows have room below.
void SearchUsrCtrl::shareRoom()
{
    const int all = ui_->parts->height();
    const auto* page = ui_->page->layout();
    const int wanted = page->hasHeightForWidth() ? page->totalHeightForWidth(ui_->form->viewport()->width())
                                                 : page->totalSizeHint().height();
    const int fields = qMin(wanted, all - qMin(all / 2, ui_->SResultGrid->fontMetrics().height() * 8));
    ui_->parts->setSizes({fields, all - fields});
}

void SearchUsrCtrl::showResults(const Stanza& answer)
{
    --searches_;
    const bool isError = answer.IqFields().Type() == u"error";
    auto found = searchanswers::results(answer);
    const auto count = found.rows.size();
    const auto leftOut = found.leftOut;
    ui_->SResultGrid->showResults(std::move(found), isError ? QString() : tr("Nobody was found."));
    if (isError)
        showState(tr("The search failed: %1").arg(StanzaError::of(answer.root()).sentence()));
    else if (leftOut > 0)
        showState(tr("%1 were found; these are the first %2 of them.").arg(count + leftOut).arg(count));
    else if (count > 0)
        showState(count == 1 ? tr("One was found.") : tr("%1 were found.").arg(count));
}
