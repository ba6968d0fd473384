#include "reports/AssessmentTables.h"

#include "assessment/AssessmentShown.h"
#include "calc/CalibrationText.h"
#include "model/Acoustics.h"
#include "model/Captions.h"
#include "platform/Format.h"

namespace kestrane {

namespace {

using Kind = enum ReportBlock::Kind;
using Rows = std::vector<std::vector<std::string>>;

Rows whereWhoWhen(const AssessmentSubject& subject) {
    const auto text = [&](Text::Id id) { return subject.session.LoadText(id); };
    return {{text(Text::Workplace), subject.assessment.Workplace},
            {text(Text::Assessor), subject.assessment.Assessor},
            {text(Text::AssessmentDate), subject.assessment.Date}};
}

class GroupBlocks {
public:
    GroupBlocks(const AssessmentSubject& subject, std::size_t group) :
        subject_(subject),
        session_(subject.session),
        group_(subject.assessment.Groups[group]),
        result_(subject.results[group]) {}

    std::vector<ReportBlock> build() {
        lines({}, details());
        if (group_.Strategy == Strategy::Task) {
            table(Text::HeadingTasks, taskCaptions(), tasks());
        } else {
            lines(Text::HeadingSamples, {{{}, samplesText(group_.Samples)}});
        }
        lines(Text::None, figures(), heading(Text::HeadingFigures, std::string(kAssessmentEdition)));
        week();
        table(Text::HeadingActions, {text(Text::ColumnAction), text(Text::ColumnLimit), text(Text::ColumnState)},
              actions());
        lines(Text::HeadingCriteria, criteria());
        if (group_.Protector) lines(Text::HeadingProtector, protector());
        lines(Text::HeadingWarnings, warnings());
        table(Text::HeadingSources,
              {text(Text::ColumnFile), text(Text::ColumnRows), text(Text::ColumnLAeq), text(Text::ColumnHash)},
              sources());
        blocks_.push_back(
            {Kind::Sign,
             {},
             {},
             {{text(Text::Assessor)}, {withColon(session_, text(Text::Signature))}, {text(Text::AssessmentDate)}}});
        return std::move(blocks_);
    }

private:
    std::string text(Text::Id id) const { return session_.LoadText(id); }

    std::string heading(Text::Id id, const std::string& word) const { return ReplaceText(text(id), "^", word); }

    std::string number(const Figure& figure, std::string_view pattern) const {
        return figure ? formatNumber(*figure, pattern, session_.locale) : std::string("\u2013");
    }

    void lines(Text::Id title, Rows rows, const std::string& words = {}) {
        if (rows.empty()) return;
        const std::string shown = title == Text::None ? words : text(title);
        if (!shown.empty()) blocks_.push_back({Kind::Heading, shown});
        blocks_.push_back({Kind::Lines, {}, {}, std::move(rows)});
    }

    void table(Text::Id title, std::vector<std::string> captions, Rows rows) {
        if (rows.empty()) return;
        blocks_.push_back({Kind::Heading, text(title)});
        blocks_.push_back({Kind::Table, {}, std::move(captions), std::move(rows)});
    }

    Rows details() const {
        Rows rows = whereWhoWhen(subject_);
        rows.insert(rows.end(),
                    {{withColon(session_, text(Text::GroupForm)), group_.Name},
                     {text(Text::WorkersLabel), group_.Workers ? std::to_string(*group_.Workers) : std::string()},
                     {text(Text::MethodOfAssessment),
                      std::string(kAssessmentEdition) + ", " + strategyText(session_, group_.Strategy)},
                     {text(Text::EffectiveDayLabel), number(group_.EffectiveDay.value_or(8), "##0.0# h")},
                     {text(Text::MeterLabel), meterText(session_, group_.Instrument)}});
        for (const MeasuredWith& with : subject_.measured.instruments(group_, subject_.path))
            rows.push_back({text(Text::MeasuredWithLabel), instrument(with)});
        return rows;
    }

    std::string instrument(const MeasuredWith& with) const {
        std::string words = with.Name + (with.Serial.empty() ? std::string() : " [" + with.Serial + "]");
        for (const auto& [of, date] :
             {std::pair(Text::CalibratedOn, &with.Calibrated), {Text::FactoryDueOn, &with.FactoryDue}})
            if (const std::string day = LongDate(session_, *date); !day.empty()) words += ", " + heading(of, day);
        for (const std::string& noted :
             {calibrationLevels(session_, with.Calibration), calibrationOffset(session_, with.Calibration)})
            if (!noted.empty()) words += ", " + noted;
        return words;
    }

    std::string samplesText(const std::vector<Sample>& samples) const {
        std::string words;
        for (const Sample& sample : samples) {
            const auto* rows = std::get_if<LogRows>(&sample);
            Figure level;
            if (rows == nullptr) {
                level = std::get<double>(sample);
            } else if (const MeasuredRows* found = subject_.measured.rows(subject_.path, *rows); found != nullptr) {
                level = found->Levels.Leq;
            }
            words += (words.empty() ? "" : "  ") + number(level, "##0.0") + (rows == nullptr ? "" : "*");
        }
        return words;
    }

    std::vector<std::string> taskCaptions() const {
        return {text(Text::ColumnTask),   text(Text::ColumnSamples), text(Text::ColumnLAeq),
                text(Text::ColumnHours),  text(Text::ColumnRange),   text(Text::ColumnContribution),
                text(Text::ColumnPoints), text(Text::ColumnShare),   text(Text::ColumnPeak)};
    }

    Rows tasks() const {
        Rows rows;
        for (std::size_t i = 0; i < group_.Tasks.size(); ++i) {
            const AssessmentTask& task = group_.Tasks[i];
            const TaskResult& found = result_.Tasks[i];
            const std::string range = task.HoursRange ? number((*task.HoursRange)[0], "##0.0#") + " \u2013 " +
                                                            number((*task.HoursRange)[1], "##0.0#")
                                                      : std::string();
            rows.push_back({task.Name, samplesText(task.Samples), number(found.Leq, "##0.0"),
                            number(found.Hours, "##0.0#"), range, number(found.Contribution, "##0.0"),
                            number(found.Points, "##0"), number(found.Share, "##0 %"),
                            found.CPeak ? number(found.CPeak, "##0.0") : std::string()});
        }
        return rows;
    }

    Rows figures() const {
        Rows rows = {{withColon(session_, text(Text::FigureLex)), exposureScale(session_, result_).Words}};
        for (const ShownFigure& figure : shownFigures(session_, result_))
            if (figure.Caption != text(Text::FigureLex))
                rows.push_back({withColon(session_, figure.Caption), figure.Value});
        return rows;
    }

    void week() {
        if (group_.Week.empty()) return;
        std::string days;
        for (const AssessmentDay& day : group_.Week)
            days +=
                (days.empty() ? "" : ",  ") + day.Name + " " + number(day.LEX8h ? day.LEX8h : result_.LEX8h, "##0.0");
        blocks_.back().Rows.push_back({withColon(session_, text(Text::Week)), days});
    }

    Rows actions() const {
        Rows rows;
        for (const ShownAction& action : shownActions(session_, result_))
            rows.push_back({action.Name, action.Limit, action.Symbol + " " + action.Words});
        return rows;
    }

    // Those that a mean level of a day can be held against; the others need the rows of each log.
    Rows criteria() const {
        return {{withColon(session_, text(Text::CriteriaEU)),
                 heading(Text::CriterionByLevel, levelText(session_, result_.LEX8h))},
                {withColon(session_, text(Text::CriteriaNiosh)),
                 heading(Text::CriterionByDose, number(result_.Points, "##0") + " %")},
                {{}, text(Text::CriteriaOfLogs)}};
    }

    Rows protector() const {
        const AssessmentProtector& worn = *group_.Protector;
        Rows rows;
        if (!worn.Name.empty()) rows.push_back({text(Text::ProtectorLabel), worn.Name});
        Figure hours; // of the working day; nothing for a share that cannot be
        if (worn.WornPercent >= 0 && worn.WornPercent <= 100)
            hours = group_.EffectiveDay.value_or(kReferenceHours) * worn.WornPercent / 100;
        rows.push_back({text(Text::TimeWorn), ReplaceText(heading(Text::WornTime, number(worn.WornPercent, "##0")), "*",
                                                          number(hours, "##0.0#"))});
        if (result_.Protected) rows.push_back({{}, text(adviceOf(result_.Protected->Verdict))});
        return rows;
    }

    static Text::Id adviceOf(Verdict verdict) {
        switch (verdict) {
        case Verdict::Good:
        case Verdict::Acceptable:
            return Text::AdviceFits;
        case Verdict::OverProtected:
            return Text::AdviceOver;
        case Verdict::Insufficient:
            return Text::AdviceInsufficient;
        case Verdict::None:
            break;
        }
        return Text::VerdictNone;
    }

    Rows warnings() const {
        Rows rows;
        for (const std::string& warning : shownWarnings(session_, result_))
            rows.push_back({{}, "\u2022 " + warning});
        return rows;
    }

    Rows sources() const {
        Rows rows;
        for (const SourceResult& source : result_.Sources) {
            const std::string range = source.From && source.To
                                          ? std::to_string(*source.From) + "\u2013" + std::to_string(*source.To)
                                          : std::string();
            rows.push_back({source.File + (source.Log.empty() ? "" : ", " + source.Log), range,
                            number(source.Leq, "##0.0"), source.Sha256});
        }
        return rows;
    }

    const AssessmentSubject& subject_;
    const Session& session_;
    const AssessmentGroup& group_;
    const GroupResult& result_;
    std::vector<ReportBlock> blocks_;
};

} // namespace

std::vector<ReportBlock> blocksWithoutGroup(const AssessmentSubject& subject) {
    return {{Kind::Lines, {}, {}, whereWhoWhen(subject)},
            {Kind::Heading, subject.session.LoadText(Text::AssessmentWithoutGroup)}};
}

std::vector<ReportBlock> groupBlocks(const AssessmentSubject& subject, std::size_t group) {
    return GroupBlocks(subject, group).build();
}

} // namespace kestrane
