#pragma once

class QAbstractItemView;
class QAbstractScrollArea;
class QFocusEvent;
class QString;

// What lists have in common.

// Writes into the middle of a list that is empty why it is.
void paintHint(QAbstractScrollArea& list, const QString& text);
// Whoever comes to a list by Tab stands on a row, and that row is chosen unless another is.
void chooseByTab(QAbstractItemView& list, const QFocusEvent& event);
