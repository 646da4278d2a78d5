#pragma once

#include "gallery/Gallery.h"
#include "gui/InputFlags.h"
#include "platform/WheelMotion.h"

#include <filesystem>
#include <functional>
#include <istream>
#include <string>
#include <vector>

namespace gallery {

/// Something that a hand does in the gallery, or that is done for it.
struct ScriptStep {
    enum class Kind { Move, Press, Release, Wheel, Key, Type, Hold, Wait, Page, Scale, Shot };

    Kind kind = Kind::Wait;
    int line = 0;
    gui::Point point;  // logical units of the root's, or notches along x and y
    int number = 0;    // button, key code, keyboard flags, milliseconds, page
    float scale = 1.0f;
    std::string text;  // what is typed, or a file
};

/// Reads one step per line:
///
///     move 120 80        press left         release left       wheel 0 1
///     key escape         type text          hold shift ctrl    wait 500
///     page Knobs         scale 150          shot file.png
///
/// Empty lines and what follows "#" at the start of a word are left out; "hold" alone lets all keys go.
/// Throws GalleryError with the line's number.
std::vector<ScriptStep> ReadScript(std::istream& stream);
/// The same, with the file's name before what is wrong with it.
std::vector<ScriptStep> ReadScriptFile(const std::filesystem::path& file);

/// Plays the steps on an interface. Thread: main, with the root's lock held.
class ScriptPlayer {
public:
    using Shoot = std::function<void(const std::filesystem::path& file)>;

    /// @param writeShot  writes what the interface shows
    ScriptPlayer(Gallery& playedGallery, std::vector<ScriptStep> scriptSteps, Shoot writeShot);

    /// Goes on to the next wait: its milliseconds, or -1 at the end.
    int Advance();
    std::size_t Position() const { return next; }
    std::size_t Count() const { return steps.size(); }

private:
    void Do(const ScriptStep& step);
    void Wheel(gui::Orientation axis, float notches);
    void Type(const std::string& text);
    int Flags() const { return heldKeys | heldButtons; }

    Gallery& gallery;
    gui::RootControl& root;
    std::vector<ScriptStep> steps;
    Shoot shoot;
    std::size_t next = 0;
    gui::Point mouse;
    gui::WheelMotion wheel;
    int heldKeys = 0;
    int heldButtons = 0;
};

}  // namespace gallery
