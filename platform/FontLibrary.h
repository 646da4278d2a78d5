#pragma once

#include "platform/FontFace.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include <fontconfig/fontconfig.h>

namespace gui {

/// The fonts of all interfaces of this module: the carried ones, and the system's for what those lack. It has
/// a configuration of its own, so that a host's or another module's fonts aren't touched. Freed with its last
/// user. Thread: any, with `Mutex` held from the first use of a face to the last.
class FontLibrary {
public:
    /// The module's library. Throws std::runtime_error if there is no memory for it.
    static std::shared_ptr<FontLibrary> Get();

    ~FontLibrary();
    FontLibrary(const FontLibrary&) = delete;
    FontLibrary& operator=(const FontLibrary&) = delete;

    std::mutex& Mutex() { return mutex; }

    /// The system's font of that name, or the carried one if it is empty, unknown or one of pictures.
    const FontFace& Face(const std::string& name, bool bold);
    /// A font that has the character, or null. Asks the system once for each.
    const FontFace* FaceWith(char32_t character, bool bold);

private:
    using FacePath = std::pair<std::string, int>;  // of a file, and the place of a font in it

    FontLibrary();
    enum class Colours { None, Some };
    /// @param name       empty for any
    /// @param character  0 for any
    const FontFace* Match(const std::string& name, char32_t character, bool bold, Colours colours);
    const FontFace* Open(const FacePath& path);

    std::mutex mutex;
    FT_Library library = nullptr;
    FcConfig* config = nullptr;  // null until the system is asked for the first time
    std::unique_ptr<FontFace> regular;
    std::unique_ptr<FontFace> emphasised;
    std::map<FacePath, std::unique_ptr<FontFace>> opened;                  // null for what can't be read
    std::map<std::pair<char32_t, bool>, const FontFace*> faceOfCharacter;  // null for what nobody has
    std::map<std::pair<std::string, bool>, const FontFace*> faceOfName;
};

}  // namespace gui
