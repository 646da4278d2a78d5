#include "platform/FontLibrary.h"

#include "foundation/Resources.h"

#include <stdexcept>

namespace gui {

namespace {

struct PatternScope {
    explicit PatternScope(FcPattern* owned) : pattern(owned) {}
    ~PatternScope()
    {
        if (pattern)
            FcPatternDestroy(pattern);
    }
    PatternScope(const PatternScope&) = delete;
    PatternScope& operator=(const PatternScope&) = delete;
    FcPattern* pattern;
};

const FcChar8* FcText(const char* text) { return reinterpret_cast<const FcChar8*>(text); }

bool IsOfFamily(FcPattern* pattern, const std::string& name)
{
    FcChar8* family = nullptr;
    for (int i = 0; FcPatternGetString(pattern, FC_FAMILY, i, &family) == FcResultMatch; ++i) {
        if (FcStrCmpIgnoreCase(family, FcText(name.c_str())) == 0)
            return true;
    }
    return false;
}

bool HasCharacter(FcPattern* pattern, char32_t character)
{
    FcCharSet* characters = nullptr;
    return FcPatternGetCharSet(pattern, FC_CHARSET, 0, &characters) == FcResultMatch &&
           FcCharSetHasChar(characters, character);
}

}  // namespace

std::shared_ptr<FontLibrary> FontLibrary::Get()
{
    static std::mutex creation;
    static std::weak_ptr<FontLibrary> shared;
    const std::lock_guard lock(creation);
    std::shared_ptr<FontLibrary> library = shared.lock();
    if (!library) {
        library.reset(new FontLibrary);
        shared = library;
    }
    return library;
}

FontLibrary::FontLibrary()
{
    if (FT_Init_FreeType(&library) != 0)
        throw std::runtime_error("No font library");
    regular = std::make_unique<FontFace>(library, findResource("Inter-Regular.otf"));
    regular->DarkenStems();
    emphasised = std::make_unique<FontFace>(library, findResource("Inter-Bold.otf"));
}

FontLibrary::~FontLibrary()
{
    opened.clear();
    regular.reset();
    emphasised.reset();
    FT_Done_FreeType(library);
    if (config)
        FcConfigDestroy(config);
}

const FontFace& FontLibrary::Face(const std::string& name, bool bold)
{
    const FontFace* face = nullptr;
    if (!name.empty()) {
        const auto [place, isNew] = faceOfName.try_emplace({name, bold}, nullptr);
        if (isNew)
            place->second = Match(name, 0, bold, Colours::None);
        face = place->second;
    }
    // Pictures have no height that lines could follow.
    if (face && face->HasPictures())
        face = nullptr;
    return face ? *face : bold ? *emphasised : *regular;
}

const FontFace* FontLibrary::FaceWith(char32_t character, bool bold)
{
    const auto [place, isNew] = faceOfCharacter.try_emplace({character, bold}, nullptr);
    if (isNew)
        place->second = Match({}, character, bold, Colours::None);
    // Colours weigh more in the system's choice than characters do: who wants none gets no font that has
    // them.
    if (isNew && !place->second)
        place->second = Match({}, character, bold, Colours::Some);
    return place->second;
}

const FontFace* FontLibrary::Match(const std::string& name, char32_t character, bool bold, Colours colours)
{
    if (!config)
        config = FcInitLoadConfigAndFonts();
    const PatternScope wanted(FcPatternCreate());
    if (!config || !wanted.pattern)
        return nullptr;
    FcPatternAddString(wanted.pattern, FC_FAMILY, FcText(name.empty() ? "sans-serif" : name.c_str()));
    FcPatternAddInteger(wanted.pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddBool(wanted.pattern, FC_SCALABLE, FcTrue);
    FcPatternAddBool(wanted.pattern, FC_COLOR, colours == Colours::Some ? FcTrue : FcFalse);
    if (character != 0) {
        FcCharSet* characters = FcCharSetCreate();
        FcCharSetAddChar(characters, character);
        FcPatternAddCharSet(wanted.pattern, FC_CHARSET, characters);
        FcCharSetDestroy(characters);
    }
    FcConfigSubstitute(config, wanted.pattern, FcMatchPattern);
    FcDefaultSubstitute(wanted.pattern);
    FcResult result = FcResultNoMatch;
    const PatternScope found(FcFontMatch(config, wanted.pattern, &result));
    if (!found.pattern || (!name.empty() && !IsOfFamily(found.pattern, name)) ||
        (character != 0 && !HasCharacter(found.pattern, character)))
        return nullptr;
    FcChar8* path = nullptr;
    int index = 0;
    FcPatternGetInteger(found.pattern, FC_INDEX, 0, &index);
    if (FcPatternGetString(found.pattern, FC_FILE, 0, &path) != FcResultMatch)
        return nullptr;
    return Open({reinterpret_cast<const char*>(path), index});
}

const FontFace* FontLibrary::Open(const FacePath& path)
{
    const auto [place, isNew] = opened.try_emplace(path, nullptr);
    if (isNew) {
        try {
            place->second = std::make_unique<FontFace>(library, path.first, path.second);
        } catch (const std::runtime_error&) {
            // A damaged font of the system's counts as none.
        }
    }
    return place->second.get();
}

}  // namespace gui
