// A dialog that asks for one of the lines of a list.
#pragma once

#include <QStringList>
#include <optional>

class QWidget;

namespace orvantis {

/// Number of the chosen line, from 1; 0: "OK" was pressed without a choice, as in an empty list. No
/// value: cancelled.
std::optional<int> AskForItem(QWidget* parent, const QString& title, const QStringList& lines);

}  // namespace orvantis
