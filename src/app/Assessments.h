// Opening, saving and closing of exposure assessments, and reading the data files behind them: the decisions of the
// file menu, without its windows.
#pragma once

#include "app/Documents.h"
#include "assessment/AssessmentDocument.h"
#include "assessment/Measurements.h"

#include <functional>
#include <optional>
#include <string>

namespace kestrane {

// Whether the name ends like that of an assessment.
bool isNamedAsAssessment(const std::string& name);

// Returns nothing when it cannot be read, and the reason has been shown, or when another running program has it open
// and the user does not want to read it only.
std::optional<AssessmentDocument> OpenAssessment(Session& session, const std::string& path, OpenSource source);

// A new assessment with today's date and one group.
AssessmentDocument NewAssessment(const Session& session);

// Saves it, and asks for a name when it has none or is for reading only. Returns false when it was not saved.
bool SaveAssessment(Session& session, AssessmentDocument& document, bool bSaveAs, const AskSaveName& askName);

// Asks about a file that another program has changed since it was read or saved. Returns true when the document or its
// name has changed by that.
bool LookForOtherPrograms(Session& session, AssessmentDocument& document, const AskSaveName& askName);

// Offers to save changes. Returns false when the user cancels or it could not be saved.
bool MayCloseAssessment(Session& session, AssessmentDocument& document, const AskSaveName& askName);

std::string assessmentName(const Session& session, const AssessmentDocument& document); // without folder

// The same with the mark of what is for reading only.
std::string assessmentTitle(const Session& session, const AssessmentDocument& document);

// Is told before each data file how many have been read. Returns false when no more shall be read.
using ReadProgress = std::function<bool(std::size_t read, std::size_t files)>;

// Reads the data files that the document needs, with the pump running, as they are on the disk, even when they are also
// open in an explorer. Records their hashes in the samples that have none. When progress ends it, the rest stays
// unread.
void ReadDataFiles(Session& session, AssessmentDocument& document, Measurements& measured,
                   const ReadProgress& progress);

struct LogSample {
    LogRows Rows;
    std::string Name; // of the log
};

// The log of a tree node, or a range of its rows. Returns nothing for any other node, and for a log whose file has
// unsaved changes; then the user gets a message.
std::optional<LogSample> sampleOfNode(Session& session, const std::string& key,
                                      const std::optional<RowRange>& range = std::nullopt);

} // namespace kestrane
