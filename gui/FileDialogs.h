#pragma once

#include "gui/Component.h"

#include <string>

namespace gui {

/// Asks for a file to read or to write. Thread: main; nested loop with the root's lock freed.
class OpenSaveDialog : public Component {
public:
    enum class Kind { Open, Save };
    using Component::Component;

    Property<Kind> DialogKind{Kind::Open, this};
    Property<std::string> Title{std::string(), this};
    /// Pairs of a name and its patterns: "Preset files|*.mvp;*.mvx|All files|*".
    Property<std::string> Filter{std::string(), this};
    Property<std::string> InitialFolder{std::string(), this};
    Property<std::string> DefaultExtension{std::string(),
                                           this};         // without the dot; added to a name that has none
    Property<std::string> FileName{std::string(), this};  // in: proposed; out: the whole path

    /// True if a file was chosen, now in `FileName`.
    virtual bool Show() = 0;
};

/// Asks for a folder. Thread: main; nested loop with the root's lock freed.
class SelectFolderDialog : public Component {
public:
    using Component::Component;

    Property<std::string> Title{std::string(), this};
    Property<std::string> Folder{std::string(), this};  // in: where to begin; out: the choice

    virtual bool Show() = 0;
};

}  // namespace gui
