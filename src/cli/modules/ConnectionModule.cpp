// kestrane-connection: the serial line and HTTP.
#include "cli/Modules.h"
#include "platform/connection/QtComm.h"
#include "platform/connection/QtHttp.h"

#include <string_view>

namespace kestrane {

namespace {

class QtConnection : public Connection {
public:
    std::unique_ptr<Comm> serialPorts(Session& session, const std::string& onlyDevice) override {
        auto comm =
            std::make_unique<QtComm>(session.settings, [&session](Text::Id id) { return session.LoadText(id); });
        if (!onlyDevice.empty()) comm->UseOnly(onlyDevice);
        return comm;
    }

    std::unique_ptr<Http> http() override { return std::make_unique<QtHttp>(); }
};

} // namespace

} // namespace kestrane

extern "C" void* kestraneModule(const char* version) {
    const bool isSame = std::string_view(version) == KESTRANE_VERSION_TEXT;
    return isSame ? static_cast<kestrane::Connection*>(new kestrane::QtConnection) : nullptr;
}
