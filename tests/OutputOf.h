// What a program prints when it is run with these words.
#pragma once

#include <QProcess>

#include <string>

namespace kestrane {

inline std::string outputOf(const char* program, const QStringList& words) {
    QProcess process;
    process.start(program, words);
    process.waitForFinished();
    return process.readAllStandardOutput().toStdString();
}

} // namespace kestrane
