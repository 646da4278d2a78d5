#include "gui/Menu.h"

namespace gui {

void MenuItem::propertyChanged(AbstractProperty&)
{
    if (parent)
        parent->ItemsChanged();
}

void MenuItem::ItemsChanged()
{
    if (parent)
        parent->ItemsChanged();
}

void MenuItem::ItemSelected(MenuItem& item)
{
    if (&item == this)
        OnClick.fire(this);
    if (parent)
        parent->ItemSelected(item);
}

Menu::~Menu() = default;

MenuItem& Menu::AddItem(int index, std::unique_ptr<MenuItem> item)
{
    item->parent = this;
    const auto place = index < 0 || index > ItemCount() ? items.end() : items.begin() + index;
    MenuItem& added = **items.insert(place, std::move(item));
    ItemsChanged();
    return added;
}

MenuItem* Menu::GetItem(int index) const
{
    return index >= 0 && index < ItemCount() ? items[static_cast<std::size_t>(index)].get() : nullptr;
}

void Menu::Clear()
{
    if (items.empty())
        return;
    items.clear();
    ItemsChanged();
}

}  // namespace gui
