// One page of the settings dialog. It shows the working copy and stores the user's choices in it.
#pragma once

#include "app/SettingsDialog.h"

#include <QWidget>

namespace kestrane {

class OptionsPage : public QWidget {
public:
    // Stores in the working copy what the page has not stored already.
    virtual void store() = 0;

protected:
    explicit OptionsPage(SettingsDialog& settings) : settings_(settings) {}

    SettingsDialog& settings_;
};

} // namespace kestrane
