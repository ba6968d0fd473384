// The folders that hold the files of a user, by the rules that Linux desktops have for them. Each name ends with "/". A
// folder need not exist, and asking for its name does not create it.
#pragma once

#include <string>

namespace kestrane {

std::string configFolder();   // settings: XDG_CONFIG_HOME, else ~/.config
std::string userDataFolder(); // data of the user: XDG_DATA_HOME, else ~/.local/share
std::string stateFolder();    // what a program remembers by itself: XDG_STATE_HOME, else ~/.local/state

} // namespace kestrane
