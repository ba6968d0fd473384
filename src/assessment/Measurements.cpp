#include "assessment/Measurements.h"

#include "assessment/AssessmentFile.h"
#include "calc/BandLevels.h"
#include "protection/Attenuation.h"
#include "protection/Ranking.h"

#include <algorithm>

namespace kestrane {

namespace {

// The protector of a group when its reduction is to be computed from a spectrum; else null.
const AssessmentProtector* lookedFor(const AssessmentGroup& group) {
    return group.Protector && !group.Protector->Reduction && group.Protector->Spectrum ? &*group.Protector : nullptr;
}

MeasuredWith instrumentOf(const clsFile& file, const clsLog& log) {
    MeasuredWith with{log.InsName, {}, log.CalibDate, log.FactoryCalibDate, log.UserCalibration};
    for (const auto& data : file.InstrumentDatas)
        forEachLog(*data, [&](const clsLog& other) {
            if (&other == &log) with.Serial = data->InsSerial;
        });
    return with;
}

const clsLog* find(MeasuredLog& out, const clsFile* file, const std::string& sha256, const std::string& key) {
    out.Sha256 = sha256;
    out.IsOpen = file != nullptr && !sha256.empty();
    const clsLog* log = out.IsOpen ? logOfKey(*file, key) : nullptr;
    if (log == nullptr) return nullptr;
    out.Log = keyOfLog(*file, *log);
    out.Instrument = instrumentOf(*file, *log);
    return log;
}

MeasuredRows measure(const clsFile* file, const std::string& sha256, const LogRows& rows) {
    MeasuredRows out;
    const clsLog* log = find(out, file, sha256, rows.Log);
    if (log == nullptr || log->HasUnreadIntervals) return out;
    out.Count = log->LogIntervals.Count();
    const RowRange range{rows.From.value_or(1), rows.To.value_or(out.Count)};
    if (range.From < 1 || range.To < range.From || range.To > out.Count) return out;
    const bool isWhole = !rows.From && !rows.To;
    out.Levels = levelsOfRows(*log, isWhole ? std::nullopt : std::optional(range));
    out.Levels.Rows = {};
    return out;
}

MeasuredProtector measure(const Session& session, const clsFile* file, const std::string& sha256,
                          const AssessmentProtector& worn, const clsHP* hp) {
    MeasuredProtector out;
    const clsLog* log = find(out, file, sha256, worn.Spectrum->Log);
    out.IsKnown = hp != nullptr;
    if (log == nullptr || hp == nullptr) return out;
    out.Leq = aWeightedLeq(*log);
    clsOptions options = session.Options;
    options.HPDCalc = modeOfName(worn.Mode).value_or(eHPDModeEUHSE);
    options.HPDCalcMethod = "Auto";
    const RankedProtector found =
        rankProtectors(*log, {*hp}, options, static_cast<CorrectionKind>(worn.Correction)).front();
    out.Method = found.Method;
    out.Level = found.Standard;
    if (!out.Level && found.Result != kCannotCompute) out.Level = found.Result;
    return out;
}

} // namespace

Measurements::RowsKey Measurements::keyOf(const std::string& path, const LogRows& rows) {
    return {dataFileOf(path, rows.File), rows.Log, rows.From, rows.To};
}

Measurements::ProtectorKey Measurements::keyOf(const std::string& path, const AssessmentProtector& worn) {
    return {dataFileOf(path, worn.Spectrum->File), worn.Spectrum->Log, worn.Name, worn.Mode, worn.Correction};
}

std::vector<std::string> Measurements::unread(const Assessment& assessment, const std::string& path) const {
    std::vector<std::string> files;
    const auto add = [&](const LogRows& rows) {
        std::string file = dataFileOf(path, rows.File);
        if (std::ranges::find(files, file) == files.end()) files.push_back(std::move(file));
    };
    forEachSampleRows(assessment, [&](const LogRows& rows) {
        if (this->rows(path, rows) == nullptr) add(rows);
    });
    for (const AssessmentGroup& group : assessment.Groups) {
        const AssessmentProtector* worn = lookedFor(group);
        if (worn != nullptr && protector(path, *worn) == nullptr) add(*worn->Spectrum);
    }
    return files;
}

void Measurements::take(const Session& session, const Assessment& assessment, const std::string& path,
                        const std::string& dataFile, const clsFile* file, const std::string& sha256,
                        const FindProtector& find) {
    forEachSampleRows(assessment, [&](const LogRows& rows) {
        if (dataFileOf(path, rows.File) != dataFile || this->rows(path, rows) != nullptr) return;
        rows_[keyOf(path, rows)] = measure(file, sha256, rows);
    });
    for (const AssessmentGroup& group : assessment.Groups) {
        const AssessmentProtector* worn = lookedFor(group);
        if (worn == nullptr || dataFileOf(path, worn->Spectrum->File) != dataFile) continue;
        if (protector(path, *worn) == nullptr)
            protectors_[keyOf(path, *worn)] = measure(session, file, sha256, *worn, find(worn->Name));
    }
}

const MeasuredRows* Measurements::rows(const std::string& path, const LogRows& rows) const {
    const auto found = rows_.find(keyOf(path, rows));
    return found == rows_.end() ? nullptr : &found->second;
}

const MeasuredProtector* Measurements::protector(const std::string& path, const AssessmentProtector& worn) const {
    const auto found = protectors_.find(keyOf(path, worn));
    return found == protectors_.end() ? nullptr : &found->second;
}

std::vector<MeasuredWith> Measurements::instruments(const AssessmentGroup& group, const std::string& path) const {
    std::vector<MeasuredWith> all;
    forEachSampleRows(group, [&](const LogRows& rows) {
        const MeasuredRows* found = this->rows(path, rows);
        if (found == nullptr || found->Log.empty()) return;
        if (std::ranges::find(all, found->Instrument) == all.end()) all.push_back(found->Instrument);
    });
    return all;
}

void Measurements::forget() {
    rows_.clear();
    forgetProtectors();
}

void Measurements::forgetProtectors() {
    protectors_.clear();
}

void keepMeasuredHashes(Assessment& assessment, const std::string& path, const Measurements& measured) {
    forEachSampleRows(assessment, [&](LogRows& rows) {
        const MeasuredRows* found = measured.rows(path, rows);
        if (rows.Sha256.empty() && found != nullptr) rows.Sha256 = found->Sha256;
    });
    for (AssessmentGroup& group : assessment.Groups) {
        const AssessmentProtector* worn = lookedFor(group);
        const MeasuredProtector* found = worn == nullptr ? nullptr : measured.protector(path, *worn);
        if (found != nullptr && worn->Spectrum->Sha256.empty()) group.Protector->Spectrum->Sha256 = found->Sha256;
    }
}

} // namespace kestrane
