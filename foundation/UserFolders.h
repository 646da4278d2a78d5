#pragma once

#include <string>

// Where the files of a user lie. Every folder ends in the separator and needn't exist; without any home of
// the user it is empty, and nothing can be kept. The environment is read anew by every call. Thread: any but
// audio.

/// What programs keep for the user: "$XDG_DATA_HOME/", or "~/.local/share/".
std::string applicationDataFolder();
/// Settings: "$XDG_CONFIG_HOME/", or "~/.config/".
std::string configurationFolder();
/// The user's own documents, where the desktop has them, or "~/Documents/".
std::string documentsFolder();

/// What a product keeps for the user. @param product  with its major version, as "Sordelin 2"
std::string productDataFolder(const std::string& product);
/// The presets of a product, among the user's documents.
std::string presetFolder(const std::string& product);

/// The name under which the settings of a major version of a product are kept:
/// "Software\Morvelane\Sordelin\2.0". @param product  without its version
std::string settingsKey(const std::string& product, int majorVersion);
/// The same for the settings of all products of the maker.
std::string settingsKey();
/// The file behind such a name, as "Morvelane/Sordelin/2.0.toml" in the folder of settings.
std::string settingsPath(const std::string& key);
