#pragma once

#include "gallery/GalleryPage.h"

#include <memory>
#include <span>
#include <string>

namespace gui {
class ToggleButton;
}

namespace gallery {

/// A bar with tabs, a page, and a line of help below: all of an interface's root. Thread: main, with the
/// root's lock held.
class Gallery : public gui::Control {
public:
    static constexpr gui::Point windowSize{926.0f, 514.0f};  // logical units, as the editor at its widest

    /// In the order of the tabs.
    static std::span<const char* const> PageNames();
    /// -1 if there is none of that name, whatever its case.
    static int PageOf(const std::string& name);

    explicit Gallery(gui::UserInterface& ui);
    ~Gallery() override;

    /// Opens a page anew.
    /// @param index  0..pages - 1
    void ShowPage(int index);
    int PageIndex() const { return pageIndex; }
    const GalleryPage& Page() const { return *page; }
    /// To another level of gui::DeviceBacking.
    void SetScale(float scale);
    void StepScale(int levels);

    bool KeyPressed(int keyCode, int character, int flags) override;
    void PaintContent(gui::Canvas& canvas) override;
    void BackingScaleChanged() override;

private:
    template <class T, class... Arguments>
    T& Add(Arguments&&... arguments)
    {
        owned.push_back(std::make_unique<T>(std::forward<Arguments>(arguments)...));
        return static_cast<T&>(*owned.back());
    }
    void AddTabs();
    void AddScale();
    void ShowScale();

    gui::Animator animator;
    GalleryStyles styles;
    std::vector<std::unique_ptr<gui::Control>> owned;
    gui::ToggleButton* tabs = nullptr;
    gui::Button* scaleButton = nullptr;
    Caption* help = nullptr;
    std::unique_ptr<GalleryPage> page;
    int pageIndex = 0;
};

}  // namespace gallery
