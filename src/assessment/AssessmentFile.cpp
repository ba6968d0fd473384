#include "assessment/AssessmentFile.h"

#include "platform/AtomicFile.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <filesystem>
#include <iterator>
#include <limits>
#include <set>
#include <span>

namespace kestrane {

namespace {

using Json = AssessmentJson;

constexpr std::string_view kSchema = "kestrane-assessment/1";
constexpr int kDeepest = 100; // levels of nesting that are accepted

constexpr std::string_view kStrategies[] = {"task", "job", "full-day"};
constexpr std::string_view kMeters[] = {"class1", "class2", "dosimeter"};
constexpr std::string_view kModes[] = {"hse", "osha", "niosh"};
constexpr int kHighestCorrection = 3;

[[noreturn]] void refuse(const std::string& path, const std::string& reason) {
    throw RuntimeError(kErrorAssessment, path + ": " + reason);
}

template <class T>
void readObject(const Json& json, const std::string& path, T& object);
template <class T>
Json writeObject(const T& object);

// Conversions from JSON; each type has its own words for what was expected.
void read(const Json& json, const std::string& path, std::string& value) {
    if (!json.is_string()) refuse(path, "a text is needed");
    value = json.get<std::string>();
}

void read(const Json& json, const std::string& path, double& value) {
    if (!json.is_number()) refuse(path, "a number is needed");
    value = json.get<double>();
}

void read(const Json& json, const std::string& path, std::int64_t& value) {
    constexpr double kExact = 9e15; // every whole number up to this one is a double
    const double number = json.is_number() ? json.get<double>() : 0.5;
    if (number != std::floor(number) || std::abs(number) > kExact) refuse(path, "a whole number is needed");
    value = static_cast<std::int64_t>(number);
}

void read(const Json& json, const std::string& path, int& value) {
    std::int64_t number = 0;
    read(json, path, number);
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
        refuse(path, "the number is too large");
    value = static_cast<int>(number);
}

template <class T>

requires requires(T object) {
    object.Other;
}

void read(const Json& json, const std::string& path, T& value) {
    readObject(json, path, value);
}

void read(const Json& json, const std::string& path, Sample& value) {
    if (json.is_number()) {
        value = json.get<double>();
    } else if (json.is_object()) {
        readObject(json, path, value.emplace<LogRows>());
    } else {
        refuse(path, "a level or rows of a log are needed");
    }
}

void read(const Json& json, const std::string& path, std::array<double, 2>& value) {
    if (!json.is_array() || json.size() != value.size()) refuse(path, "two numbers are needed, [shortest, longest]");
    for (std::size_t i = 0; i < value.size(); ++i)
        read(json[i], path + "[" + std::to_string(i) + "]", value[i]);
}

template <class T>
void read(const Json& json, const std::string& path, std::optional<T>& value) {
    read(json, path, value.emplace());
}

template <class T>
void read(const Json& json, const std::string& path, std::vector<T>& value) {
    if (!json.is_array()) refuse(path, "a list is needed");
    for (std::size_t i = 0; i < json.size(); ++i)
        read(json[i], path + "[" + std::to_string(i) + "]", value.emplace_back());
}

template <class T>
Json write(const T& value) {
    if constexpr (requires { value.Other; }) {
        return writeObject(value);
    } else {
        return value;
    }
}

Json write(const Sample& value) {
    return std::visit([](const auto& sample) { return write(sample); }, value);
}

template <class T>
Json write(const std::vector<T>& values) {
    Json list = Json::array();
    for (const T& value : values)
        list.push_back(write(value));
    return list;
}

// Reader and Writer are the two directions of the member lists below. A list calls them with a key, the member, and
// whether it is required; it calls words() with the words that a text or an enumeration may be.
class Reader {
public:
    Reader(const Json& json, std::string path) : rest_(json), path_(std::move(path)) {
        if (!json.is_object()) refuse(path_, "an object is needed");
    }

    template <class T>
    void operator()(const char* key, T& member, bool isNeeded = false) {
        if (const Json value = take(key, isNeeded); !value.is_null()) read(value, path_ + "." + key, member);
    }

    template <class T>
    void words(const char* key, T& member, std::span<const std::string_view> words, bool isNeeded) {
        const Json value = take(key, isNeeded);
        if (value.is_null()) return;
        std::string word;
        read(value, path_ + "." + key, word);
        const auto found = std::find(words.begin(), words.end(), word);
        if (found == words.end()) refuse(path_ + "." + key, "'" + word + "' has no meaning here");
        if constexpr (std::is_enum_v<T>) {
            member = static_cast<T>(found - words.begin());
        } else {
            member = word;
        }
    }

    Json rest() { return std::move(rest_); }

    const std::string& path() const { return path_; }

private:
    Json take(const char* key, bool isNeeded) {
        Json value;
        if (const auto found = rest_.find(key); found != rest_.end()) {
            value = std::move(*found);
            rest_.erase(key);
        }
        if (isNeeded && value.is_null()) refuse(path_ + "." + key, "it is missing");
        return value;
    }

    Json rest_; // the members that have not been read yet
    std::string path_;
};

class Writer {
public:
    template <class T>
    void operator()(const char* key, const T& member, bool isNeeded = false) {
        if constexpr (std::same_as<T, std::string>) {
            if (isNeeded || !member.empty()) json_[key] = member;
        } else if constexpr (requires { member.has_value(); }) {
            if (member) json_[key] = write(*member);
        } else if constexpr (requires { member.begin(); }) {
            if (isNeeded || !member.empty()) json_[key] = write(member);
        } else {
            json_[key] = write(member);
        }
    }

    template <class T>
    void words(const char* key, const T& member, std::span<const std::string_view> words, bool) {
        if constexpr (std::is_enum_v<T>) {
            json_[key] = words[static_cast<std::size_t>(member)];
        } else {
            json_[key] = member;
        }
    }

    Json with(const Json& rest) {
        if (rest.is_object()) json_.update(rest);
        return std::move(json_);
    }

private:
    Json json_ = Json::object();
};

template <class T, class U>
concept Is = std::same_as<std::remove_const_t<T>, U>;

void members(auto& list, Is<LogRows> auto& rows) {
    list("file", rows.File, true);
    list("log", rows.Log);
    list("from", rows.From);
    list("to", rows.To);
    list("sha256", rows.Sha256);
}

void members(auto& list, Is<AssessmentTask> auto& task) {
    list("name", task.Name, true);
    list("duration_h", task.Hours, true);
    list("duration_range_h", task.HoursRange);
    list("peak_c", task.CPeak);
    list("samples", task.Samples, true);
}

void members(auto& list, Is<AssessmentDay> auto& day) {
    list("day", day.Name);
    list("lex8h", day.LEX8h);
}

void members(auto& list, Is<AssessmentProtector> auto& protector) {
    list("name", protector.Name);
    list.words("mode", protector.Mode, kModes, false);
    list("correction", protector.Correction);
    list("spectrum", protector.Spectrum);
    list("reduction_db", protector.Reduction);
    list("worn_percent", protector.WornPercent);
}

void members(auto& list, Is<AssessmentGroup> auto& group) {
    list("name", group.Name, true);
    list("workers", group.Workers);
    list.words("strategy", group.Strategy, kStrategies, true);
    list.words("instrument", group.Instrument, kMeters, true);
    list("effective_day_h", group.EffectiveDay);
    list("peak_c", group.CPeak);
    list("tasks", group.Tasks, group.Strategy == Strategy::Task);
    list("samples", group.Samples, group.Strategy != Strategy::Task);
    list("week", group.Week);
    list("protector", group.Protector);
}

void members(auto& list, Is<Assessment> auto& assessment) {
    std::string schema(kSchema);
    list.words("schema", schema, std::span(&kSchema, 1), true);
    list("title", assessment.Title);
    list("workplace", assessment.Workplace);
    list("assessor", assessment.Assessor);
    list("date", assessment.Date);
    list("groups", assessment.Groups, true);
}

void check(const AssessmentProtector& protector, const std::string& path) {
    if (protector.Correction < 0 || protector.Correction > kHighestCorrection)
        refuse(path + ".correction", "a number from 0 to 3 is needed");
    if (protector.Reduction) return;
    if (protector.Name.empty()) refuse(path + ".name", "it is missing");
    if (!protector.Spectrum) refuse(path + ".spectrum", "it is missing");
}

template <class T>
void readObject(const Json& json, const std::string& path, T& object) {
    Reader reader(json, path);
    members(reader, object);
    if constexpr (std::same_as<T, AssessmentProtector>) check(object, path);
    object.Other = reader.rest();
}

template <class T>
Json writeObject(const T& object) {
    Writer writer;
    members(writer, object);
    return writer.with(object.Other);
}

// The line and column of a byte, which is counted from 1, as most editors count them.
std::string placeOf(std::string_view text, std::size_t byte) {
    const std::string_view before = text.substr(0, byte == 0 ? 0 : byte - 1);
    const auto line = std::ranges::count(before, '\n') + 1;
    const std::size_t column = before.size() - (before.rfind('\n') + 1) + 1; // npos + 1 is 0
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

} // namespace

Assessment assessmentOfText(std::string_view text) {
    Json json;
    try {
        std::vector<std::set<std::string>> keys; // of the objects that are open
        json = Json::parse(text, [&keys](int depth, Json::parse_event_t event, const Json& part) {
            if (depth > kDeepest) refuse("$", "it is nested too deeply");
            if (event == Json::parse_event_t::object_start) keys.emplace_back();
            if (event == Json::parse_event_t::object_end) keys.pop_back();
            const bool isTwice =
                event == Json::parse_event_t::key && !keys.back().insert(part.get<std::string>()).second;
            if (isTwice) refuse("$", "'" + part.get<std::string>() + "' stands twice in one object");
            return true;
        });
    } catch (const Json::parse_error& error) {
        refuse("$", "it is not JSON in UTF-8 from " + placeOf(text, error.byte) + " on");
    } catch (const Json::out_of_range&) {
        refuse("$", "a number is too large");
    }
    Assessment assessment;
    readObject(json, "$", assessment);
    return assessment;
}

std::string assessmentText(const Assessment& assessment) {
    constexpr int kIndent = 2;
    return writeObject(assessment).dump(kIndent, ' ', false, Json::error_handler_t::replace) + "\n";
}

Assessment loadAssessment(const std::string& path) {
    return assessmentOfText(readFile(path)->view());
}

void saveAssessment(const std::string& path, const Assessment& assessment) {
    const std::string text = assessmentText(assessment);
    writeFileAtomically(path, [&](const FileSink& sink) { sink(text); });
}

std::string dataFileOf(const std::string& assessmentPath, const std::string& file) {
    if (pathOf(file).is_absolute()) return file;
    return assessmentPath.substr(0, assessmentPath.rfind('/') + 1) + file;
}

void moveDataFiles(Assessment& assessment, const std::string& from, const std::string& to) {
    const std::filesystem::path folder = pathOf(to).parent_path();
    const auto move = [&](LogRows& rows) {
        const std::filesystem::path file = pathOf(dataFileOf(from, rows.File)).lexically_normal();
        const std::string relative = file.lexically_relative(folder).generic_string();
        const bool isThere = !relative.empty() && isSameFile(dataFileOf(to, relative), file.generic_string());
        rows.File = isThere ? relative : file.generic_string();
    };
    forEachSampleRows(assessment, move);
    for (AssessmentGroup& group : assessment.Groups)
        if (group.Protector && group.Protector->Spectrum) move(*group.Protector->Spectrum);
}

} // namespace kestrane
