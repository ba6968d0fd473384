// Small dialogs that ask for a line of text or for one entry of a list, with the application's name as their title.
#pragma once

#include "model/Session.h"

#include <QString>

#include <optional>
#include <string>

class QWidget;

namespace kestrane {

// The dialogs are shown above parent, which must outlive the functions.
AskText textDialog(const Session& session, QWidget* parent);
AskChoice choiceDialog(const Session& session, QWidget* parent);

// Asks a question whose answers have captions of their own, beside Cancel. Returns the place of the answer; that behind
// the last one for Cancel. Enter gives the first answer.
std::size_t chooseAnswer(const Session& session, const std::string& question, const std::vector<std::string>& captions,
                         QWidget* parent);

struct SaveQuestion {
    QString Title, Proposal;
    QString Filter; // as the toolkit takes it
    QString Ending; // "png"
};

// Asks for the name of a file that is to be written. A name with another ending gets the right one, too. Returns
// nothing when the user cancelled, and never the name of a file that the user would not have replaced.
std::optional<std::string> askSaveName(Session& session, QWidget* parent, const SaveQuestion& asked);

} // namespace kestrane
