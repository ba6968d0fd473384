#include "platform/qt/IniSettings.h"

#include "platform/AtomicFile.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/UserFolders.h"

#include <QSettings>
#include <QStringList>

#include <cerrno>
#include <cstring>
#include <utility>

namespace kestrane {

namespace {

QString textOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString keyOf(std::string_view section, std::string_view key) {
    return textOf(section) + '/' + textOf(key);
}

} // namespace

IniSettings::IniSettings(const std::string& path) :
    settings_(std::make_unique<QSettings>(QString::fromStdString(path), QSettings::IniFormat)) {}

IniSettings::IniSettings(IniSettings&&) noexcept = default;

IniSettings::~IniSettings() = default;

IniSettings IniSettings::ofApplication(const std::string& applicationName) {
    return ofUser(configFolder() + applicationName + ".ini");
}

IniSettings IniSettings::stateOfApplication(const std::string& applicationName) {
    return ofUser(stateFolder() + "kestrane/" + applicationName + ".ini");
}

IniSettings IniSettings::ofUser(const std::string& path) {
    IniSettings settings(path);
    settings.settings_->allKeys(); // forces the file to be read to its end, which is otherwise put off
    if (settings.settings_->status() != QSettings::NoError) settings.unreadable_ = path;
    return settings;
}

IniSettings IniSettings::ofFile(const std::string& path) {
    if (!fileExists(path)) writeFileAtomically(path, [](const FileSink&) {});
    IniSettings settings(path);
    settings.sync();
    return settings;
}

std::string IniSettings::read(std::string_view section, std::string_view key, std::string_view defaultText) const {
    if (const auto known = written_.Values.find({std::string(section), std::string(key)});
        known != written_.Values.end())
        return known->second;
    const QVariant value = settings_->value(keyOf(section, key));
    if (!value.isValid()) return std::string(defaultText);
    // A text with commas that was typed by hand is read as a list.
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(", ").toStdString()
                                                    : value.toString().toStdString();
}

void IniSettings::write(std::string_view section, std::string_view key, std::string_view text) {
    if (!unreadable_.empty()) return written_.write(section, key, text);
    const QString name = keyOf(section, key);
    if (settings_->contains(name) && read(section, key, {}) == text) return;
    settings_->setValue(name, textOf(text));
    sync();
}

void IniSettings::remove(std::string_view section, std::string_view key) {
    if (!unreadable_.empty()) return written_.remove(section, key);
    settings_->remove(keyOf(section, key));
    sync();
}

void IniSettings::sync() {
    settings_->sync();
    if (settings_->status() == QSettings::NoError) return;
    if (tell_) { // the values that could not be written stay in settings_
        const std::function<void(const std::string&)> tell = std::exchange(tell_, [](const std::string&) {});
        return tell(settings_->fileName().toStdString());
    }
    const int error = settings_->status() == QSettings::AccessError ? EACCES : EINVAL;
    throw RuntimeError(error, std::strerror(error));
}

} // namespace kestrane
