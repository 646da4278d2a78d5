#include "gallery/GalleryScript.h"

#include "clap_host/NearestNames.h"
#include "gallery/GalleryError.h"
#include "gallery/GalleryOptions.h"
#include "gui/RootControl.h"
#include "gui/UserInterface.h"

#include <charconv>
#include <fstream>
#include <sstream>

namespace gallery {

namespace {

using Kind = ScriptStep::Kind;

struct Word {
    const char* name;
    int value;
};

constexpr Word commands[] = {{"move", 0}, {"press", 1}, {"release", 2}, {"wheel", 3},
                             {"key", 4},  {"type", 5},  {"hold", 6},    {"wait", 7},
                             {"page", 8}, {"scale", 9}, {"shot", 10}};
constexpr Word buttons[] = {{"left", gui::MouseButton::left}, {"right", gui::MouseButton::right}};
constexpr Word keys[] = {{"up", gui::KeyCode::up},
                         {"down", gui::KeyCode::down},
                         {"left", gui::KeyCode::left},
                         {"right", gui::KeyCode::right},
                         {"home", gui::KeyCode::home},
                         {"end", gui::KeyCode::end},
                         {"delete", gui::KeyCode::deleteKey},
                         {"escape", gui::KeyCode::escape}};
constexpr Word modifiers[] = {
    {"shift", gui::InputFlags::shift}, {"alt", gui::InputFlags::alt}, {"ctrl", gui::InputFlags::ctrl}};

template <std::size_t count>
int ValueOf(const std::string& wanted, const Word (&words)[count], const char* what)
{
    std::vector<std::string> names;
    for (const Word& word : words) {
        if (wanted == word.name)
            return word.value;
        names.emplace_back(word.name);
    }
    throw GalleryError("there is no " + std::string(what) + " \"" + wanted + "\"" +
                       didYouMean(wanted, names));
}

template <class T>
T NumberOf(const std::string& text)
{
    T number{};
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || error != std::errc() || rest != end)
        throw GalleryError("\"" + text + "\" is no number");
    return number;
}

/// The words of a line, and where each begins.
std::vector<std::string> Split(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word && word.front() != '#';)
        words.push_back(word);
    return words;
}

/// What stands behind the first word.
std::string RestOf(const std::string& line)
{
    constexpr const char* blanks = " \t\r";
    const std::size_t command = line.find_first_not_of(blanks);
    const std::size_t end = line.find_first_of(blanks, command);
    const std::size_t rest = line.find_first_not_of(blanks, end);
    if (end == std::string::npos || rest == std::string::npos)
        return {};
    return line.substr(rest, line.find_last_not_of(blanks) + 1 - rest);
}

ScriptStep ReadStep(const std::vector<std::string>& words, const std::string& line)
{
    ScriptStep step;
    step.kind = static_cast<Kind>(ValueOf(words.front(), commands, "command"));
    const std::string rest = RestOf(line);
    const auto expect = [&](std::size_t count, const char* what) {
        if (words.size() != count + 1)
            throw GalleryError("\"" + words.front() + "\" takes " + what);
    };
    switch (step.kind) {
    case Kind::Move:
    case Kind::Wheel:
        expect(2, step.kind == Kind::Move ? "two coordinates" : "notches along x and y");
        step.point = {NumberOf<float>(words[1]), NumberOf<float>(words[2])};
        break;
    case Kind::Press:
    case Kind::Release:
        expect(1, "a button");
        step.number = ValueOf(words[1], buttons, "button");
        break;
    case Kind::Key:
        expect(1, "a key");
        step.number = ValueOf(words[1], keys, "key");
        break;
    case Kind::Hold:
        for (std::size_t i = 1; i < words.size(); ++i)
            step.number |= ValueOf(words[i], modifiers, "key to hold");
        break;
    case Kind::Wait:
        expect(1, "milliseconds");
        step.number = NumberOf<int>(words[1]);
        if (step.number < 0)
            throw GalleryError("time doesn't go backwards");
        break;
    case Kind::Page:
        step.number = FindPage(rest);
        break;
    case Kind::Scale:
        expect(1, "percent");
        step.scale = FindScale(NumberOf<int>(words[1]));
        break;
    case Kind::Type:
    case Kind::Shot:
        if (rest.empty())
            throw GalleryError("\"" + words.front() + "\" takes " +
                               (step.kind == Kind::Type ? "a text" : "a file"));
        step.text = rest;
        break;
    }
    return step;
}

/// The code points of UTF-8 text; damaged bytes are left out.
std::u32string PointsOf(const std::string& utf8)
{
    std::u32string points;
    int missing = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0xC0) {
            missing = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
            points.push_back(byte & (0x3Fu >> missing));
        } else if (byte < 0x80) {
            missing = 0;
            points.push_back(byte);
        } else if (missing > 0) {
            --missing;
            points.back() = points.back() << 6 | (byte & 0x3Fu);
        }
    }
    return points;
}

}  // namespace

std::vector<ScriptStep> ReadScript(std::istream& stream)
{
    std::vector<ScriptStep> steps;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const std::vector<std::string> words = Split(line);
        if (words.empty())
            continue;
        try {
            steps.push_back(ReadStep(words, line));
            steps.back().line = number;
        } catch (const GalleryError& error) {
            throw GalleryError("line " + std::to_string(number) + ": " + error.what());
        }
    }
    return steps;
}

std::vector<ScriptStep> ReadScriptFile(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    if (!stream || std::filesystem::is_directory(file))
        throw GalleryError(file.string() + " can't be read");
    try {
        return ReadScript(stream);
    } catch (const GalleryError& error) {
        throw GalleryError(file.string() + ", " + error.what());
    }
}

ScriptPlayer::ScriptPlayer(Gallery& playedGallery, std::vector<ScriptStep> scriptSteps, Shoot writeShot)
    : gallery(playedGallery),
      root(playedGallery.userInterface.GetRootControl()),
      steps(std::move(scriptSteps)),
      shoot(std::move(writeShot))
{}

int ScriptPlayer::Advance()
{
    while (next < steps.size()) {
        const ScriptStep& step = steps[next++];
        if (step.kind == Kind::Wait)
            return step.number;
        Do(step);
    }
    return -1;
}

void ScriptPlayer::Do(const ScriptStep& step)
{
    const int buttonFlag =
        step.number == gui::MouseButton::left ? gui::InputFlags::leftButton : gui::InputFlags::rightButton;
    switch (step.kind) {
    case Kind::Move:
        mouse = step.point;
        root.WindowMouseMove(mouse, Flags());
        break;
    case Kind::Press:
        heldButtons |= buttonFlag;
        root.WindowMouseDown(step.number, mouse, Flags());
        break;
    case Kind::Release:
        heldButtons &= ~buttonFlag;
        root.WindowMouseUp(step.number, mouse, Flags());
        break;
    case Kind::Wheel:
        Wheel(gui::Orientation::Horizontal, step.point.x);
        Wheel(gui::Orientation::Vertical, step.point.y);
        break;
    case Kind::Key:
        root.WindowKey(step.number, 0, Flags());
        break;
    case Kind::Type:
        Type(step.text);
        break;
    case Kind::Hold:
        heldKeys = step.number;
        root.WindowModifiers(heldKeys);
        break;
    case Kind::Page:
        gallery.ShowPage(step.number);
        break;
    case Kind::Scale:
        gallery.SetScale(step.scale);
        break;
    case Kind::Shot:
        shoot(step.text);
        break;
    case Kind::Wait:
        break;
    }
}

void ScriptPlayer::Wheel(gui::Orientation axis, float notches)
{
    if (notches == 0.0f)
        return;
    const gui::WheelMotion::Scroll scroll =
        wheel.Step(axis, notches, Flags(), gallery.userInterface.Clock()());
    root.WindowScroll(mouse, scroll.flags, scroll.velocity, scroll.delta, scroll.magnitude);
}

void ScriptPlayer::Type(const std::string& text)
{
    for (const char32_t point : PointsOf(text))
        root.WindowKey(gui::KeyCode::character, static_cast<int>(point), Flags());
}

}  // namespace gallery
