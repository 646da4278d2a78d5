#include "gallery/GalleryPage.h"

#include <string>

namespace gallery {

namespace {

using gui::Alignment;
using gui::Point;

class TextPage : public GalleryPage {
public:
    TextPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
    {
        AddSizes(12, gui::Palette::face, gui::Palette::ink, "Dark on light");
        AddSizes(318, gui::Palette::bar, gui::Palette::white, "Light on dark");
        AddStyles();
        AddLines();
        AddLetters();
    }

private:
    void AddSizes(float left, gui::Color ground, gui::Color ink, const char* title);
    void AddStyles();
    void AddLines();
    void AddLetters();
    Caption& AddSample(Point at, const std::string& text, float points)
    {
        return AddText(at, text, Alignment::Left, points, gui::Palette::ink);
    }
};

void TextPage::AddSizes(float left, gui::Color ground, gui::Color ink, const char* title)
{
    AddPainting({left, 12, left + 294, 312},
                [ground](gui::Canvas& canvas, const gui::Rect& area) { canvas.FillRect(area, ground); });
    AddText({left + 10, 18}, title, Alignment::Left, 7.5f, ink.Faded(170));
    float top = 34;
    for (const float points : {7.0f, 8.0f, 9.0f, 10.0f, 11.0f, 12.0f, 14.0f, 18.0f, 24.0f}) {
        const std::string figure = std::to_string(static_cast<int>(points));
        Caption& number = AddText({left + 26, top}, figure, Alignment::Right, points < 14.0f ? points : 8.0f,
                                  ink.Faded(130));
        const char* const sample = points < 14.0f   ? "Feedback 62.5 %, Filter 1.9 kHz"
                                   : points < 24.0f ? "Tape delay 350 ms"
                                                    : "Sordelin";
        Caption& text = AddText({left + 36, top}, sample, Alignment::Left, points, ink);
        if (points >= 14.0f)
            number.Place({left + 26, top + (text.GetHeight() - number.GetHeight()) * 0.5f}, Alignment::Right);
        top += text.GetHeight() + (points < 14.0f ? 7.0f : 9.0f);
    }
}

void TextPage::AddStyles()
{
    AddCard({624, 12, 914, 142}, "Styles");
    const char* const names[] = {"Regular", "Bold", "Italic", "Underlined", "All of them"};
    for (int i = 0; i < 5; ++i) {
        const float top = 35.0f + 20.5f * static_cast<float>(i);
        Caption& text = AddSample({634, top}, std::string(names[i]) + ": 12.5 dB, 440 Hz, jpqy", 10.0f);
        text.Font().Bold.assign(i == 1 || i == 4);
        text.Font().Italic.assign(i == 2 || i == 4);
        text.Font().Underline.assign(i == 3 || i == 4);
        text.Fit();
    }
}

void TextPage::AddLines()
{
    AddCard({624, 154, 914, 312}, "Lines in 130 units");
    AddPainting({634, 176, 764, 304}, [](gui::Canvas& canvas, const gui::Rect& area) {
        canvas.FillRect(area, gui::Palette::face);
    });
    Caption& cut = AddSample({634, 180}, "One line that is cut where the room ends", 9.0f);
    cut.Font().MaxWidth.assign(130.0f);
    cut.Font().LineStyle.assign(gui::Text::LineStyle::Ellipsis);
    cut.Fit();
    Caption& wrapped = AddSample(
        {634, 202},
        "Words go on in the next line where the room ends, and incomprehensiblenesses are cut anywhere.",
        9.0f);
    wrapped.Font().MaxWidth.assign(130.0f);
    wrapped.Font().LineStyle.assign(gui::Text::LineStyle::Wrapped);
    wrapped.Fit();
    const char* const names[] = {"Left", "Centre", "Right"};
    AddPainting({838, 180, 839, 298}, [](gui::Canvas& canvas, const gui::Rect& area) {
        canvas.FillRect(area, gui::Palette::accent);
    });
    for (int i = 0; i < 3; ++i) {
        const float top = 184.0f + 40.0f * static_cast<float>(i);
        AddText({838, top}, names[i], static_cast<Alignment>(i), 9.0f, gui::Palette::ink);
        AddText({838, top + 16}, "at the line", static_cast<Alignment>(i), 9.0f, gui::Palette::ink);
    }
}

void TextPage::AddLetters()
{
    AddCard({12, 324, 914, 444}, "Letters");
    const char* const rows[][2] = {
        {"Pairs", "AVAToyWayTeLTP.Y,11.7/To  Ve Wo Yo Ta AW \"A\" r. f) ffi fl"},
        {"Figures", "0123456789  1.25 s  −6.0 dB  ±50 %  ½ ⅓ ×2  440 Hz"},
        {"Europe", "ÄÖÜäöüß éèêëçñøåœ łőžšč Ελληνικά Русский Türkçe ıİ"},
        {"Elsewhere", "日本語 中文 한국어 العربية עברית ไทย  ab עברית, 1.5 😀🎧"},
        {"Signs", "→ ← ↑ ↓ ♯ ♭ ♪ € © “quotes” – dash — …   none: \xF3\xB0\x80\x80 \xEE\x80\x80"},
    };
    for (int i = 0; i < 5; ++i) {
        const float top = 349.0f + 18.5f * static_cast<float>(i);
        AddText({22, top + 1}, rows[i][0], Alignment::Left, 8.0f);
        AddSample({88, top}, rows[i][1], 9.0f);
        Caption& bold = AddSample({508, top}, rows[i][1], 9.0f);
        bold.Font().Bold.assign(true);
        bold.Fit();
    }
}

}  // namespace

std::unique_ptr<GalleryPage> MakeTextPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<TextPage>(parts, parent);
}

}  // namespace gallery
