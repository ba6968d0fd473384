// One page of the settings dialog: shows the working copy and writes into it what the user chose.
#pragma once

#include "app/SettingsDialog.h"

#include <QWidget>

namespace kestrane {

class OptionsPage : public QWidget {
public:
    // Writes into the working copy what the page has not written already.
    virtual void store() = 0;

protected:
    explicit OptionsPage(SettingsDialog& settings) : settings_(settings) {}

    SettingsDialog& settings_;
};

} // namespace kestrane
