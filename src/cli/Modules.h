// The parts of the program that need more of the toolkit than its core. Each is a library of its own, which is loaded
// when a verb first asks for it, so that all other verbs start without it and can be installed without it. A module
// gives one object; what crosses its border are the interfaces below.
#pragma once

#include "model/Session.h"
#include "platform/Comm.h"
#include "platform/Http.h"
#include "reports/PagedDocument.h"
#include "views/ChartData.h"
#include "views/Picture.h"

#include <functional>
#include <memory>
#include <string>

namespace kestrane {

// Draws without a window.
class Drawing {
public:
    static constexpr const char* kFile = "kestrane-drawing";
    static constexpr const char* kPackage = "kestrane";

    virtual ~Drawing() = default;

    // Writes a chart as a picture, in the format of the name's ending. Raises an error when the file cannot be written.
    virtual void savePicture(const ChartData& chart, const Locale& locale, const std::string& path,
                             PictureSize size) = 0;

    using LayOut = std::function<std::unique_ptr<PagedDocument>(const PageMetrics& metrics)>;

    // Has a document laid out on A4 and writes it as a PDF file. Returns false when the progress put an end to it;
    // nothing is written then. Raises an error when the file cannot be written.
    virtual bool writePdf(const Session& session, bool isLandscape, const LayOut& layOut, const std::string& path,
                          const PageProgress& progress) = 0;
};

// Reaches instruments and servers. Needs an event loop of the toolkit.
class Connection {
public:
    static constexpr const char* kFile = "kestrane-connection";
    static constexpr const char* kPackage = "kestrane-cli";

    virtual ~Connection() = default;

    // The serial ports of the machine, or with a device that one alone as port 1. Both arguments must outlive the
    // result.
    virtual std::unique_ptr<Comm> serialPorts(Session& session, const std::string& onlyDevice) = 0;

    virtual std::unique_ptr<Http> http() = 0;
};

// Returns what the function "kestraneModule" of a module gives for this version, or null when the module, named without
// the ending of its file, is not there or is of another version.
void* openModule(const char* file);

template <class Module>
std::unique_ptr<Module> loadModule() {
    return std::unique_ptr<Module>(static_cast<Module*>(openModule(Module::kFile)));
}

} // namespace kestrane
