// Any sequence of edits to two documents, made by the program and by the plain account of PlainDocuments.h: after each
// edit both must say the same. The line "Using configuration" that a run prints has the seed; RC_PARAMS repeats it.
#include "PlainDocuments.h"
#include "TestSession.h"
#include "app/Documents.h"
#include "calc/Recalculation.h"
#include "explorer/CutWizard.h"
#include "explorer/Edits.h"
#include "explorer/NodeEditing.h"
#include "explorer/NodeKeys.h"
#include "explorer/NodeRename.h"
#include "files/XmlWriter.h"
#include "platform/TemporaryFolder.h"
#include "server/KestraneThread.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/state.h>

#include <cmath>

namespace kestrane {
namespace {

using plain::Place;

// Two files; the collections of one serial number in both are folded together when one is pasted on the other.
plain::Documents beginning() {
    const plain::Datas first = {{"North", "S1", {{{"a", {60, 70, 80}}, {"b", {90, 91}}}, {{"c", {75, 65, 55, 85}}}}},
                                {"South", "S2", {{{"d", {88}}}, {}}}};
    const plain::Datas second = {{"West", "S1", {{{"e", {71, 72, 73, 74}}}, {{"f", {99, 40}}}}},
                                 {"East", "", {{{"g", {80, 83}}, {"h", {62, 92, 62}}}, {}}}};
    return {{{"1.xml", first, first}, {"2.xml", second, second}}, {{"1.xml", first}, {"2.xml", second}}};
}

double leqOf(const plain::Log& log) { // 0 when no row counts
    double sum = 0;
    int count = 0;
    for (int row = 1; row <= std::ssize(log.Levels); ++row) {
        const bool isInRange =
            std::ranges::any_of(log.Ranges, [row](auto r) { return r.first <= row && row <= r.second; });
        if (!log.Ranges.empty() && isInRange != log.IsIncluded) continue;
        sum += std::pow(10, log.Levels[row - 1] / 10.0);
        ++count;
    }
    return count == 0 ? 0 : 10 * std::log10(sum / count);
}

struct Program : TestSession {
    TemporaryFolder folder;
    BackgroundServer server{pump, 1};
    std::vector<bool> losesAtClosing; // a flag for each file: what it holds is not saved

    explicit Program(const plain::Documents& start) {
        session.server = &server;
        for (const plain::File& file : start.Files) {
            clsFile made(session, folder.file(file.Name));
            for (const plain::Data& data : file.Content)
                made.InstrumentDatas.push_back(made_(data));
            writeText(made.FileName, DocumentText(made, true));
            open(file.Name);
            losesAtClosing.push_back(false);
        }
    }

    ~Program() { session.OpenFiles.clear(); }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void open(const std::string& name) {
        RC_ASSERT(OpenFile(session, folder.file(name), OpenSource::Named, true));
        wait();
    }

    void wait() {
        pump.runUntil([this] { return session.IsIdle(); });
    }

    clsFile& file(Place p) { return *session.OpenFiles[p.File]; }

    clsLog& log(Place p) { return *file(p).InstrumentDatas[p.Data]->logsOf(toLogMode(p.Mode))[p.Log]; }

    std::string key(Place p) {
        if (p.Data < 0) return fileKey(file(p));
        const clsInsData& data = *file(p).InstrumentDatas[p.Data];
        if (p.Mode < 0) return dataKey(data, file(p));
        return p.Log < 0 ? groupKey(toLogMode(p.Mode), data, file(p)) : logKey(log(p), data, file(p));
    }

    bool remove(Place p) {
        ExplorerState state;
        state.SelectedKey = key(p);
        messages.Answers = {Button::Ok};
        return DeleteNode(session, state);
    }

    // The same edits as those of the plain account.

    bool rename(Place p, const std::string& name) {
        messages.Answers.clear();
        return renameNode(session, key(p), name);
    }

    bool paste(Place from, Place to, bool isMove) { return PasteNode(session, key(from), key(to), isMove); }

    bool exchange(int f, bool isUndo) {
        return exchangeStep(session, &file({f}), isUndo ? Direction::Undo : Direction::Redo);
    }

    bool select(Place p, const std::vector<std::pair<int, int>>& ranges, bool isIncluded) {
        clsLog& changed = log(p);
        return editLog(changed, Text::StepIntervalSelection, [&] {
            CutWizard wizard(changed);
            wizard.Next();
            while (wizard.CanClear())
                wizard.Clear();
            if (!ranges.empty()) std::tie(wizard.From, wizard.To) = ranges.front();
            wizard.ToBeIncluded = isIncluded;
            messages.Answers = {Button::Ok}; // to finish without a range
            const bool isChanged = wizard.Finish() && wizard.Store(changed);
            if (isChanged) RecalcValues(changed, kCalcFull);
            return isChanged;
        });
    }

    bool save(int f, const std::string& name) {
        clsFile& saved = file({f});
        std::vector<std::optional<std::string>> names = {folder.file(name), std::nullopt};
        return SaveFile(session, saved, folder.file(name) != saved.FileName, [&names](const std::string&) {
            auto next = names.front();
            names.erase(names.begin());
            return next;
        });
    }

    void reopen(int f) {
        const std::string name = file({f}).ShortenedFileName();
        messages.Answers = {Button::No};
        messages.Boxes.clear();
        RC_ASSERT(CloseFile(session, &file({f}), [](const std::string&) { return std::nullopt; }));
        RC_ASSERT(!losesAtClosing[f] || messages.Boxes.size() == 1);
        losesAtClosing.erase(losesAtClosing.begin() + f);
        losesAtClosing.push_back(false);
        open(name);
    }

    plain::Log plainOf(const clsLog& log) const {
        plain::Log plain = {log.Name};
        for (std::size_t row = 0; row < static_cast<std::size_t>(log.LogIntervals.Count()); ++row)
            plain.Levels.push_back(static_cast<int>(log.LogIntervals.Columns().level(Quantity::LeqA, 0, row).Value));
        for (const RowRange& range : selectionRanges(log.LogIntervals.CutIntervals))
            plain.Ranges.emplace_back(range.From, range.To);
        plain.IsIncluded = log.LogIntervals.IntervalsToBeIncluded;
        const double leq = leqOf(plain); // when no row counts, the figure stays as it was
        RC_ASSERT(leq == 0 || std::abs(leq - static_cast<double>(log.LeqCumA(0).CalcValue())) < 0.01);
        return plain;
    }

    plain::Datas plainOf(const clsFile& file) const {
        plain::Datas plain;
        for (const auto& data : file.InstrumentDatas) {
            plain.push_back({data->NameX, data->InsSerial});
            forEachLog(*data, [&](const clsLog& log) { plain.back().Logs[log.Mode()].push_back(plainOf(log)); });
        }
        return plain;
    }

    void compareWith(const plain::Documents& expected) {
        RC_ASSERT(session.OpenFiles.size() == expected.Files.size());
        losesAtClosing.clear();
        for (std::size_t i = 0; i < expected.Files.size(); ++i) {
            const plain::File& plain = expected.Files[i];
            const clsFile& file = *session.OpenFiles[i];
            RC_ASSERT(file.FileName == folder.file(plain.Name));
            RC_ASSERT(plainOf(file) == plain.Content);
            losesAtClosing.push_back(plain.Content != plain.Saved);
            RC_ASSERT(!losesAtClosing.back() || file.IsUnsaved());
            if (plain.SavedAt == plain.at() && !plain.IsMarked) RC_ASSERT(!file.IsUnsaved());
            const bool isUndone = !plain.Done.empty() && plain.Done.back().Joint == 0;
            if (isUndone) RC_ASSERT(canExchange(&file, Direction::Undo));
        }
    }

private:
    std::unique_ptr<clsInsData> made_(const plain::Data& plain) {
        auto data = std::make_unique<clsInsData>(session);
        data->InsName("Corvane");
        data->NameX = plain.Name;
        data->InsSerial = plain.Serial;
        for (int mode = 0; mode < plain::kModes; ++mode) {
            for (const plain::Log& from : plain.Logs[mode]) {
                auto log = std::make_unique<clsLog>(session);
                log->Mode(toLogMode(mode));
                log->InsName = data->InsName();
                log->Name = from.Name;
                log->Interval = 60;
                log->LeqCumA(0).Value(static_cast<float>(leqOf(from)));
                log->LogIntervals.setArraySize(std::ssize(from.Levels));
                for (std::size_t row = 0; row < from.Levels.size(); ++row) {
                    const auto level = static_cast<float>(from.Levels[row]);
                    log->LogIntervals.Columns().setLevel(Quantity::LeqA, 0, row, {level, level});
                }
                data->append(std::move(log), kAtEnd);
            }
        }
        return data;
    }
};

// All nodes of the tree, or only its logs.
std::vector<Place> nodesOf(const plain::Documents& documents, bool areLogs) {
    std::vector<Place> nodes;
    for (int f = 0; f < std::ssize(documents.Files); ++f) {
        if (!areLogs) nodes.push_back({f});
        for (int d = 0; d < std::ssize(documents.Files[f].Content); ++d) {
            if (!areLogs) nodes.push_back({f, d});
            for (int m = 0; m < plain::kModes; ++m) {
                const auto logs = std::ssize(documents.Files[f].Content[d].Logs[m]);
                for (int l = areLogs || logs == 0 ? 0 : -1; l < logs; ++l)
                    nodes.push_back({f, d, m, l});
            }
        }
    }
    return nodes;
}

enum class Kind { Paste, Move, Delete, Rename, Select, Undo, Redo, Save, SaveAs, Reopen };

constexpr const char* kKindNames[] = {"paste", "move", "delete", "rename",  "select",
                                      "undo",  "redo", "save",   "save as", "reopen"};
using Command = rc::state::Command<plain::Documents, Program>;

// An edit by bare numbers, so that it means something in any state.
struct Edit : Command {
    Kind kind;
    int node, other, number;

    Edit(Kind k, int n, int o, int m) : kind(k), node(n), other(o), number(m) {}

    void apply(plain::Documents& documents) const override { performIn(documents, documents); }

    void run(const plain::Documents& before, Program& program) const override {
        plain::Documents after = before;
        const bool isExpected = performIn(before, after);
        RC_ASSERT(performIn(before, program) == isExpected);
        program.wait();
        program.compareWith(after);
    }

    void show(std::ostream& out) const override {
        out << kKindNames[static_cast<int>(kind)] << ' ' << node << ' ' << other << ' ' << number;
    }

private:
    // Makes the edit, which begins with the state before, in the plain account or in the program.
    template <class Target>
    bool performIn(const plain::Documents& before, Target& target) const {
        const std::vector<Place> nodes = nodesOf(before, kind == Kind::Select);
        if (nodes.empty()) return false;
        const Place at = nodes[static_cast<std::size_t>(node) % nodes.size()];
        const std::string fileName = std::to_string(number % 3 + 1) + ".xml";
        switch (kind) {
        case Kind::Paste:
        case Kind::Move:
            return target.paste(at, nodes[static_cast<std::size_t>(other) % nodes.size()], kind == Kind::Move);
        case Kind::Delete:
            return target.remove(at);
        case Kind::Rename:
            return target.rename(at, at.Data < 0 ? fileName : "new " + std::to_string(number % 3));
        case Kind::Select:
            return target.select(at, rangesIn(before, at), number % 2 == 0);
        case Kind::Undo:
        case Kind::Redo:
            return target.exchange(at.File, kind == Kind::Undo);
        case Kind::Save:
        case Kind::SaveAs:
            return target.save(at.File, kind == Kind::Save ? before.Files[at.File].Name : fileName);
        case Kind::Reopen:
            target.reopen(at.File);
        }
        return true;
    }

    // None now and then, which takes the selection away.
    std::vector<std::pair<int, int>> rangesIn(const plain::Documents& before, Place at) const {
        const plain::Data& data = before.Files[at.File].Content[at.Data];
        const int rows = static_cast<int>(data.Logs[at.Mode][at.Log].Levels.size());
        const int from = 1 + number % rows;
        if (number % 5 == 0) return {};
        return {{from, from + other % (rows - from + 1)}};
    }
};

TEST(DocumentModel, AnySequenceOfEditsDoesWhatThePlainAccountSays) {
    EXPECT_TRUE(rc::check([] {
        Program program(beginning());
        rc::state::check(beginning(), program, [](const plain::Documents&) {
            const auto kinds = rc::gen::weightedElement<Kind>({{3, Kind::Paste},
                                                               {4, Kind::Move},
                                                               {2, Kind::Delete},
                                                               {3, Kind::Rename},
                                                               {4, Kind::Select},
                                                               {7, Kind::Undo},
                                                               {4, Kind::Redo},
                                                               {2, Kind::Save},
                                                               {1, Kind::SaveAs},
                                                               {2, Kind::Reopen}});
            const auto numbers = rc::gen::inRange(0, 10000);
            return rc::gen::map(rc::gen::tuple(kinds, numbers, numbers, numbers), [](const auto& drawn) {
                return std::shared_ptr<const Command>(std::make_shared<Edit>(std::get<0>(drawn), std::get<1>(drawn),
                                                                             std::get<2>(drawn), std::get<3>(drawn)));
            });
        });
        for (std::size_t i = 0; i < program.losesAtClosing.size(); ++i)
            program.reopen(0); // each in turn goes to the end
    }));
}

} // namespace
} // namespace kestrane
