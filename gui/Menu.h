#pragma once

#include "foundation/ManagedObject.h"
#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"

#include <memory>
#include <string>
#include <vector>

namespace gui {

class IBitmap;
class Menu;

/// An entry of a menu. The text "-" is a line between entries. Thread: main.
class MenuItem : public PropertyOwner, public ManagedObject {
public:
    MenuItem() = default;
    explicit MenuItem(std::string text) : Text(std::move(text), this) {}

    Property<std::string> Text{std::string(), this};  // UTF-8
    Property<bool> Checked{false, this};
    Property<bool> Enabled{true, this};
    Property<int> Tag{0, this};
    Property<bool> Visible{true, this};
    NotifyEvent OnClick;  // when it was chosen

    void SetIcon(const IBitmap* bitmap) { icon = bitmap; }
    const IBitmap* Icon() const { return icon; }
    Menu* Parent() const { return parent; }
    bool IsSeparator() const { return Text.value() == "-"; }

    void propertyChanged(AbstractProperty& property) override;
    /// The entries of a menu, or of one below it, changed.
    virtual void ItemsChanged();
    /// About to be shown: the place to fill it.
    virtual void Show() {}
    /// `item`, this one or one below it, was chosen. Goes up to the top of the tree.
    virtual void ItemSelected(MenuItem& item);

private:
    friend class Menu;
    const IBitmap* icon = nullptr;
    Menu* parent = nullptr;
};

/// A list of entries; inside another menu, a submenu.
class Menu : public MenuItem {
public:
    using MenuItem::MenuItem;
    ~Menu() override;

    /// @param index  where it goes; -1 for the end
    MenuItem& AddItem(int index, std::unique_ptr<MenuItem> item);
    MenuItem& AddItem(std::string text) { return AddItem(-1, std::make_unique<MenuItem>(std::move(text))); }
    MenuItem& AddSeparator() { return AddItem("-"); }
    MenuItem* GetItem(int index) const;  // null if there is none
    int ItemCount() const { return static_cast<int>(items.size()); }
    void Clear();

private:
    std::vector<std::unique_ptr<MenuItem>> items;
};

}  // namespace gui
