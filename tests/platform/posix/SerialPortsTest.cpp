#include "platform/SerialPorts.h"

#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

std::string listed(const std::vector<PortInfo>& ports) {
    std::string text;
    for (const PortInfo& port : ports)
        text += std::to_string(port.Number) + '=' + port.Device + '(' + port.Description + ") ";
    return text;
}

TEST(SerialPorts, AreNumberedInTheNaturalOrderOfTheirNames) {
    const std::vector<PortInfo> machine = {{0, "/dev/ttyUSB10", "b"}, {0, "/dev/ttyUSB9", "a"}, {0, "/dev/ttyACM0", ""},
                                           {0, "/dev/ttyS100", ""},   {0, "/dev/ttyS20", ""},   {0, "/dev/ttyS3", ""}};
    EXPECT_EQ(listed(numberPorts(machine, MemorySettings())),
              "1=/dev/ttyACM0() 2=/dev/ttyS3() 3=/dev/ttyS20() 4=/dev/ttyS100() 5=/dev/ttyUSB9(a) 6=/dev/ttyUSB10(b) ");

    std::vector<PortInfo> many;
    for (int i = 0; i < 300; ++i)
        many.push_back({0, "/dev/ttyS" + std::to_string(i), ""});
    const auto numbered = numberPorts(many, MemorySettings());
    ASSERT_EQ(numbered.size(), 255U);
    EXPECT_EQ(numbered.back().Number, 255);
    EXPECT_EQ(numbered.back().Device, "/dev/ttyS254");
}

TEST(SerialPorts, APinnedDeviceHasItsNumberAndTheOthersTakeWhatIsLeft) {
    const TemporaryFolder folder;
    writeText(folder.file("usb0"), "");
    writeText(folder.file("usb1"), "");
    std::filesystem::create_symlink("usb1", folder.file("meter"));
    MemorySettings settings;
    settings.write("SerialPorts", "COM1", folder.file("meter")); // a link to a port of the machine
    settings.write("SerialPorts", "COM3", "ttyX");               // not there
    settings.write("SerialPorts", "COM256", "/dev/ttyY");
    const std::vector<PortInfo> machine = {
        {0, folder.file("usb0"), "first"}, {0, folder.file("usb1"), "second"}, {0, "/dev/other", ""}};
    const auto ports = numberPorts(machine, settings);
    EXPECT_EQ(listed(ports), "1=" + folder.file("meter") +
                                 "(second) 2=/dev/other() 3=/dev/ttyX() 4=" + folder.file("usb0") + "(first) ");
}

} // namespace
} // namespace kestrane
