// The open documents as plain values, and what editing does to them in the plainest way: undo keeps whole copies, and a
// file on the disk is the value that was saved. DocumentModelTest compares the program with it.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrane::plain {

struct Log {
    std::string Name;
    std::vector<int> Levels = {};                 // dB, a row each
    std::vector<std::pair<int, int>> Ranges = {}; // rows from 1
    bool IsIncluded = false;                      // whether the ranges say what counts, or what does not

    bool operator==(const Log&) const = default;
};

constexpr int kModes = 2; // broadband, full octave

struct Data {
    std::string Name, Serial;
    std::vector<Log> Logs[kModes] = {};

    bool operator==(const Data&) const = default;
};

using Datas = std::vector<Data>;

// A node of the tree by positions; -1 for what it does not go down to. A group has a mode and no log.
struct Place {
    int File, Data = -1, Mode = -1, Log = -1;

    bool operator==(const Place&) const = default;
};

struct Step {
    Datas Other;         // before the step, or behind it when it was undone
    int Joint = 0;       // the same in both halves of a move between files; 0 for none
    int Turn = 0;        // tells the steps apart; 0 for a step that renames the file
    bool IsCopy = false; // of something in another file
    std::string Given = {}, Kept = {};
};

struct File {
    std::string Name;
    Datas Content, Saved;
    std::vector<Step> Done = {}, Undone = {};
    std::optional<int> SavedAt = 0; // the last step of content when it was saved; nothing when that is not certain
    bool IsMarked = false;          // something was copied out of it, which counts as a change, too

    int at() const {
        const auto last = std::find_if(Done.rbegin(), Done.rend(), [](const Step& s) { return s.Turn != 0; });
        return last == Done.rend() ? 0 : last->Turn;
    }
};

// Each change returns whether it changed something.
struct Documents {
    std::vector<File> Files;
    std::map<std::string, Datas> Disk;
    int Turns = 0;

    Data& data(Place p) { return Files[p.File].Content[p.Data]; }

    std::vector<Log>& group(Place p) { return data(p).Logs[p.Mode]; }

    bool remove(Place p) {
        return p.Data >= 0 && edit(p.File, [&] { takeOut(p); });
    }

    bool rename(Place p, const std::string& name) {
        if (p.Data < 0) return renameFile(Files[p.File], name);
        if (p.Mode >= 0 && p.Log < 0) return false;
        return edit(p.File, [&] { (p.Log < 0 ? data(p).Name : group(p)[p.Log].Name) = name; });
    }

    bool select(Place p, const std::vector<std::pair<int, int>>& ranges, bool isIncluded) {
        return edit(p.File, [&] {
            Log& log = group(p)[p.Log];
            log = {log.Name, log.Levels, ranges, isIncluded && !ranges.empty()};
        });
    }

    bool paste(Place from, Place to, bool isMove) {
        const bool isOfItsKind = from.Data < 0   ? to.Data < 0
                                 : from.Mode < 0 ? to.Mode < 0
                                                 : to.Mode < 0 || to.Mode == from.Mode;
        if (from == to || !isOfItsKind) return false;
        const std::pair before(Files[from.File].Content, Files[to.File].Content);
        bool isReordered = false;
        from.Data < 0 ? placeFile(from, to, isMove) : placeLogs(from, to, isMove, isReordered);
        if (!isReordered && std::pair(Files[from.File].Content, Files[to.File].Content) == before) return false;
        const int joint = isMove && from.File != to.File ? Turns + 1 : 0;
        if (joint != 0) record(from.File, {before.first, joint});
        Files[from.File].IsMarked = Files[from.File].IsMarked || !isMove;
        record(to.File, {before.second, joint, 0, !isMove && from.File != to.File});
        return true;
    }

    bool exchange(int f, bool isUndo) {
        const auto from = isUndo ? &File::Done : &File::Undone;
        if ((Files[f].*from).empty()) return false;
        const Step step = (Files[f].*from).back();
        if (step.Turn == 0 && step.Given == Files[f].Name && Disk.contains(step.Kept)) return false;
        std::vector<File*> files;
        for (int g = 0; g < std::ssize(Files); ++g) {
            const bool isHalf =
                step.Joint != 0 && !(Files[g].*from).empty() && (Files[g].*from).back().Joint == step.Joint;
            if (g == f || isHalf) files.push_back(&Files[g]);
        }
        if (step.Joint != 0 && files.size() < 2) return false;
        for (File& file : Files) // what was copied from counts as changed again, even when it was opened anew since
            if (step.IsCopy && !isUndo) file.SavedAt.reset();
        for (File* const file : files) {
            Step moved = std::move((file->*from).back());
            (file->*from).pop_back();
            if (moved.Turn != 0) std::swap(file->Content, moved.Other);
            if (moved.Turn == 0 && moved.Given == file->Name) {
                moveFile(*file, moved.Kept);
                std::swap(moved.Given, moved.Kept);
            }
            (isUndo ? file->Undone : file->Done).push_back(std::move(moved));
        }
        return true;
    }

    bool save(int f, const std::string& name) { // under its own name or another one
        File& file = Files[f];
        for (const Data& data : file.Content)
            if (data.Logs[0].empty() && data.Logs[1].empty()) return false;
        if (name != file.Name && std::ranges::find(Files, name, &File::Name) != Files.end()) return false;
        const bool isWritten = file.Content != file.Saved || name != file.Name;
        Disk[name] = file.Saved = file.Content;
        file.SavedAt = isWritten ? std::optional(file.at()) : std::nullopt;
        file.IsMarked = file.IsMarked && !isWritten;
        file.Name = name;
        return true;
    }

    void reopen(int f) {
        const std::string name = Files[f].Name;
        Files.erase(Files.begin() + f);
        Files.push_back({name, Disk[name], Disk[name]});
    }

private:
    template <class Change>
    bool edit(int f, const Change& change) {
        const Datas before = Files[f].Content;
        change();
        if (Files[f].Content == before) return false;
        record(f, {before});
        return true;
    }

    void record(int f, Step step) {
        if (step.Given.empty()) step.Turn = ++Turns;
        Files[f].Done.push_back(std::move(step));
        Files[f].Undone.clear();
    }

    void moveFile(File& file, const std::string& name) {
        Disk[name] = Disk.extract(file.Name).mapped();
        file.Name = name;
    }

    bool renameFile(File& file, const std::string& name) {
        if (Disk.contains(name)) return false;
        record(static_cast<int>(&file - Files.data()), {{}, 0, 0, false, name, file.Name});
        moveFile(file, name);
        return true;
    }

    void takeOut(Place p) {
        if (p.Mode < 0) {
            Files[p.File].Content.erase(Files[p.File].Content.begin() + p.Data);
        } else if (p.Log < 0) {
            group(p).clear();
        } else {
            group(p).erase(group(p).begin() + p.Log);
        }
    }

    // The collection with this serial number in a file; nothing without one.
    std::optional<int> ofSerial(int f, const std::string& serial) const {
        const auto found = std::ranges::find(Files[f].Content, serial, &Data::Serial);
        if (serial.empty() || found == Files[f].Content.end()) return std::nullopt;
        return static_cast<int>(found - Files[f].Content.begin());
    }

    void placeFile(Place from, Place to, bool isMove) {
        for (const Data& item : Files[from.File].Content) {
            const auto match = ofSerial(to.File, item.Serial);
            if (!match) Files[to.File].Content.push_back(item);
            for (int m = 0; m < kModes && match; ++m) {
                std::vector<Log>& logs = data({to.File, *match}).Logs[m];
                logs.insert(logs.end(), item.Logs[m].begin(), item.Logs[m].end());
            }
        }
        if (isMove) Files[from.File].Content.clear();
    }

    void placeLogs(Place from, Place to, bool isMove, bool& isReordered) {
        if (from.Mode >= 0 && from.Log < 0 && group(from).size() == 1) from.Log = 0;
        Data moved = data(from);
        for (int m = 0; m < kModes; ++m) {
            if (from.Mode >= 0 && from.Mode != m) moved.Logs[m].clear();
            if (from.Mode == m && from.Log >= 0) moved.Logs[m] = {Log(moved.Logs[m][from.Log])};
        }
        const bool isSameFile = from.File == to.File;
        if (to.Data < 0 || (from.Mode < 0 && !isSameFile)) {
            const bool isStaying = isMove && isSameFile; // without a match
            to.Data = ofSerial(to.File, moved.Serial).value_or(isStaying ? from.Data : -1);
        }
        Datas& datas = Files[to.File].Content;
        const bool isInPlace = isSameFile && to.Data == from.Data;
        if (isMove && isInPlace && (to.Log < 0 || from.Log < 0)) return;
        isReordered = isMove && isInPlace && to.Log != from.Log && to.Log + 1 != from.Log; // even of equal logs
        if (to.Data < 0) {
            to.Data = static_cast<int>(datas.size());
            datas.push_back({moved.Name, moved.Serial});
        }
        for (int m = 0; m < kModes; ++m) {
            std::vector<Log>& logs = data(to).Logs[m];
            logs.insert(to.Log < 0 ? logs.end() : logs.begin() + to.Log + 1, moved.Logs[m].begin(),
                        moved.Logs[m].end());
        }
        if (isMove) takeOut({from.File, from.Data, from.Mode, from.Log + (isInPlace && to.Log < from.Log ? 1 : 0)});
    }
};

} // namespace kestrane::plain
