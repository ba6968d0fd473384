#include "exports/Export.h"

#include "assessment/LoggedFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>

namespace kestrane {
namespace {

std::string csvOf(const ExportTable& table) {
    std::string text;
    writeCsv(table, [&text](std::string_view piece) { text += piece; });
    return text;
}

// What a command prints.
std::string outputOf(const std::string& command) {
    std::string text;
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::array<char, 1000> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), pipe))
        text.append(piece.data(), count);
    pclose(pipe);
    return text;
}

TEST(ExportTable, ColumnsAreThoseThatAnyLogHas) {
    LoggedFile first{80, 0};
    LoggedFile second({70.1F}, modeFullOctave);
    first.log->Name = "first";
    first.log->LnNumberA(1, 10);
    first.log->LnNumberA(2, 10); // a second time: it must not hide the first
    first.set(lnQuantity(1), 0, 81);
    first.set(lnQuantity(2), 0, 82);
    first.set(lnQuantity(3), 0, 83); // of no number
    first.set(Quantity::DoseA, 1, 0.5F);
    first.exclude(1);
    second.set(Quantity::LeqA, 0, 60, second.log->e("1k"));
    second.set(Quantity::Pa2hA, 0, 1e-9F);
    ExportTable table;
    table.addRows("a", "L1", *first.log);
    table.addRows("b", "O1", *second.log);
    EXPECT_EQ(table.lines(), 3);
    EXPECT_EQ(csvOf(table),
              "file,log,name,start,seconds,excluded,overloaded,LeqA_dB,DoseA_percent,LnA_L10_dB,LnA_Ln2_dB,"
              "LnA_Ln3_dB,LeqA_1k_dB,Pa2hA_Pa2h\n"
              "a,L1,first,,60,0,0,80,,81,82,83,,\n"
              "a,L1,first,,60,1,0,,0.5,,,,,\n"
              "b,O1,,,60,0,0,70.1,,,,,60,1e-09\n");
}

TEST(Xlsx, RowsThatASheetDoesNotTakeGoToFurtherOnes) {
    LoggedFile logged{70, 71, 72, 73, 74};
    ExportTable table;
    table.addRows("a", "L1", *logged.log);
    const std::string book = logged.folder.file("a.xlsx");
    writeFileAtomically(book, [&](const FileSink& sink) { writeXlsx(table, sink, {}, 3); });
    const std::string script = "import sys, zipfile, re; book = zipfile.ZipFile(sys.argv[1]);"
                               "print([re.findall(r'<c r=.H(\\d).><v>(.*?)<', book.read(f'xl/worksheets/sheet{n}.xml')"
                               ".decode()) for n in (1, 2, 3)])";
    EXPECT_EQ(outputOf("python3 -c \"" + script + "\" " + book),
              "[[('2', '70'), ('3', '71')], [('2', '72'), ('3', '73')], [('2', '74')]]\n");
}

} // namespace
} // namespace kestrane
