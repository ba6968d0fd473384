// A running program for a test: its session, with a state folder that it shares with others.
#pragma once

#include "TestSession.h"
#include "WatchedFrame.h"
#include "app/Documents.h"
#include "explorer/Edits.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrane {

constexpr const char* kTwoRows =
    "<instruments><instrument-data><instrument-detail name=\"d\"/><logs><log name=\"a\"><ca><leq><f>85</f></leq></ca>"
    "<intvls><intvl><ca><leq><f>84</f></leq></ca></intvl><intvl><ca><leq><f>86</f></leq></ca></intvl></intvls>"
    "</log></logs></instrument-data></instruments>";

// Gives answers with captions of their own in order.
struct AskedFrame : WatchedFrame {
    std::vector<std::size_t> Answers; // none left: the user does not answer
    std::vector<std::string> Questions;

    std::size_t Choose(const std::string& question, const std::vector<std::string>& captions) override {
        Questions.push_back(question);
        if (Answers.empty()) return captions.size();
        const std::size_t answer = Answers.front();
        Answers.erase(Answers.begin());
        return answer;
    }
};

struct RunningProgram : TestSession {
    AskedFrame frame;
    BackgroundServer server{pump, 2};

    explicit RunningProgram(const std::string& stateFolder) {
        session.frame = &frame;
        session.server = &server;
        session.StateFolder = stateFolder;
    }

    clsFile& open(const std::string& path) {
        EXPECT_TRUE(OpenFile(session, path, OpenSource::Named, true));
        pump.runUntil([&] { return noLogIsBusy(session); });
        return *session.OpenFiles.back();
    }

    static void rename(clsFile& file, const std::string& name) {
        editCollectionName(file, *file.InstrumentDatas.front(), name);
    }

    static std::string nameIn(const clsFile& file) { return file.InstrumentDatas.front()->NameX; }
};

// A user who gives no name to save under.
inline AskSaveName noName() {
    return [](const std::string&) -> std::optional<std::string> { return std::nullopt; };
}

} // namespace kestrane
