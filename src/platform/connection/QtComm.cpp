#include "platform/connection/QtComm.h"

#include "platform/RuntimeError.h"
#include "platform/SerialPorts.h"

#include <QSerialPort>
#include <QSerialPortInfo>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cerrno>

namespace kestrane {

namespace {

template <class Value>
struct Word {
    const char* text;
    Value value;
};

constexpr std::array<Word<QSerialPort::Parity>, 5> kParities = {{{"n", QSerialPort::NoParity},
                                                                 {"e", QSerialPort::EvenParity},
                                                                 {"o", QSerialPort::OddParity},
                                                                 {"m", QSerialPort::MarkParity},
                                                                 {"s", QSerialPort::SpaceParity}}};
constexpr std::array<Word<QSerialPort::DataBits>, 4> kDataBits = {
    {{"5", QSerialPort::Data5}, {"6", QSerialPort::Data6}, {"7", QSerialPort::Data7}, {"8", QSerialPort::Data8}}};
constexpr std::array<Word<QSerialPort::StopBits>, 3> kStopBits = {
    {{"1", QSerialPort::OneStop}, {"1.5", QSerialPort::OneAndHalfStop}, {"2", QSerialPort::TwoStop}}};

template <class Value, std::size_t Count>
Value valueOf(const std::array<Word<Value>, Count>& words, const QString& text) {
    const auto found =
        std::find_if(words.begin(), words.end(), [&](const auto& word) { return text == QLatin1String(word.text); });
    if (found == words.end()) raiseTypeMismatch();
    return found->value;
}

struct LineSettings {
    int baudRate;
    QSerialPort::Parity parity;
    QSerialPort::DataBits dataBits;
    QSerialPort::StopBits stopBits;
};

// "19200,n,8,2"
LineSettings readLine(const std::string& text) {
    const QStringList words = QString::fromStdString(text).toLower().split(',');
    if (words.size() != 4) raiseTypeMismatch();
    const int baudRate = words[0].toInt();
    if (baudRate <= 0) raiseTypeMismatch();
    return {baudRate, valueOf(kParities, words[1]), valueOf(kDataBits, words[2]), valueOf(kStopBits, words[3])};
}

std::string withMark(std::string text, const std::string& value) {
    const std::size_t mark = text.find('^');
    return mark == std::string::npos ? text : text.replace(mark, 1, value);
}

std::vector<PortInfo> portsOfMachine() {
    std::vector<PortInfo> ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        ports.push_back({0, info.systemLocation().toStdString(), info.description().toStdString()});
    return ports;
}

} // namespace

QtComm::QtComm(const SettingsStore& settings, LoadText loadText) :
    settings_(settings), loadText_(std::move(loadText)), port_(std::make_unique<QSerialPort>()) {
    port_->setFlowControl(QSerialPort::NoFlowControl);
    QObject::connect(port_.get(), &QSerialPort::readyRead, port_.get(),
                     [this] { received_ += port_->readAll().toStdString(); });
    QObject::connect(port_.get(), &QSerialPort::errorOccurred, port_.get(), [this] { handleError(); });
    QObject::connect(
        port_.get(), &QSerialPort::errorOccurred, port_.get(), [this] { closeLost(); }, Qt::QueuedConnection);
}

QtComm::~QtComm() {
    QtComm::Close(); // of this class: nothing is left of one derived from it
}

void QtComm::UseOnly(const std::string& device) {
    onlyDevice_ = devicePath(device);
}

std::vector<PortInfo> QtComm::Ports() const {
    const std::vector<PortInfo> machine = portsOfMachine();
    if (onlyDevice_.empty()) return numberPorts(machine, settings_);
    MemorySettings pins;
    pins.write("SerialPorts", "COM1", onlyDevice_);
    return {numberPorts(machine, pins).front()};
}

void QtComm::CommPort(int number) {
    number_ = number;
}

void QtComm::Settings(const std::string& settings) {
    readLine(settings);
    line_ = settings;
    if (IsOpen()) applySettings();
}

void QtComm::applySettings() {
    const LineSettings line = readLine(line_);
    const bool isTaken = port_->setBaudRate(line.baudRate) && port_->setParity(line.parity) &&
                         port_->setDataBits(line.dataBits) && port_->setStopBits(line.stopBits);
    if (!isTaken) refuse(EINVAL, port_->errorString().toStdString());
}

void QtComm::Open() {
    Close();
    fault_.clear();
    device_ = deviceOfPort();
    port_->setPortName(QString::fromStdString(trueDevice(device_))); // the lock is that of the device, not of a link
    applySettings();
    if (!port_->open(QIODevice::ReadWrite)) refuseOpening();
}

void QtComm::Close() {
    received_.clear();
    if (port_->isOpen()) port_->close();
}

bool QtComm::IsOpen() const {
    return port_->isOpen() && fault_.empty();
}

std::size_t QtComm::InBufferCount() const {
    return received_.size();
}

void QtComm::Flush() {
    if (IsOpen()) port_->clear(QSerialPort::Input);
    received_.clear();
}

void QtComm::Output(std::string_view bytes) {
    if (!fault_.empty()) refuse(EIO, fault_);
    if (!IsOpen()) raiseSystemError(EBADF);
    const auto size = static_cast<qint64>(bytes.size());
    const bool isTaken = port_->write(bytes.data(), size) == size;
    port_->flush();
    if (!fault_.empty()) refuse(EIO, fault_);
    if (!isTaken) refuse(EIO, port_->errorString().toStdString());
}

std::string QtComm::Input() {
    return std::exchange(received_, {});
}

std::string QtComm::Fault() const {
    return fault_;
}

std::string QtComm::deviceOfPort() const {
    for (const PortInfo& port : Ports())
        if (port.Number == number_) return port.Device;
    refuse(ENOENT, loadText_(Text::NoSuchDevice));
}

void QtComm::refuse(int error, const std::string& text) const {
    throw RuntimeError(error, text);
}

void QtComm::refuseOpening() const {
    const auto [error, group] = obstacleOf(device_);
    if (error == ENOTTY) refuse(error, loadText_(Text::NoSerialPort));
    if (!group.empty()) refuse(error, withMark(loadText_(Text::NoPermission), group));
    if (error != 0) refuse(error, loadText_(Text::NoSuchDevice));
    if (port_->error() == QSerialPort::PermissionError) refuse(EBUSY, loadText_(Text::PortInUse));
    refuse(EIO, loadText_(Text::NoSerialPort) + " (" + port_->errorString().toStdString() + ')');
}

void QtComm::handleError() {
    constexpr std::array kLosses = {QSerialPort::ReadError, QSerialPort::WriteError, QSerialPort::ResourceError};
    const bool isLost = std::find(kLosses.begin(), kLosses.end(), port_->error()) != kLosses.end();
    if (!isLost || !port_->isOpen() || !fault_.empty()) return;
    fault_ = withMark(loadText_(Text::PortWentAway), device_);
}

// A line that has gone reports errors without end while it is open, but it cannot be closed from within its own signal.
void QtComm::closeLost() {
    if (!fault_.empty() && port_->isOpen()) port_->close();
}

} // namespace kestrane
