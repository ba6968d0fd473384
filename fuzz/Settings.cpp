// Any bytes as the settings file. A damaged file stays as it is; what could be read of another is written back with one
// setting, which the length of the input chooses, and is the same when it is read again.
#include "ScratchFolder.h"
#include "model/clsOptions.h"
#include "platform/Files.h"
#include "platform/IniFile.h"
#include "platform/RuntimeError.h"

#include <iterator>
#include <optional>

namespace kestrane::fuzz {

namespace {

MemorySettings textsOf(const SettingsStore& store) {
    clsOptions options;
    options.GetFromRegistry(store);
    MemorySettings texts;
    options.SaveToRegistry(texts);
    return texts;
}

// Every setting as a text, after the file has been written again; nothing when the store cannot be opened.
std::optional<MemorySettings> rewritten(const std::string& path, std::size_t choice) {
    try {
        const auto store = IniFile::ofCaller(path);
        const MemorySettings texts = textsOf(*store);
        const auto& [name, text] = *std::next(texts.Values.begin(), choice % texts.Values.size());
        store->write(name.first, name.second, text);
        return texts;
    } catch (const RuntimeError& error) {
        require(error.Number != 0 && *error.what() != '\0', "a refusal says why");
        return std::nullopt;
    }
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    using namespace kestrane::fuzz;
    static const ScratchFolder folder;
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const std::string path = folder.write("settings.ini", content);
    const auto written = rewritten(path, size);
    if (!written) {
        require(readFile(path)->view() == content, "a file that cannot be read stays as it is");
        return 0;
    }
    require(textsOf(*IniFile::ofCaller(path)).Values == written->Values, "what is saved is read back");
    return 0;
}
