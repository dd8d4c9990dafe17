#include "editor/IPopupMenu.h"

#include <array>
#include <cstdio>

namespace Grimworks {

int IPopupMenu::AddItem(std::string_view text, int flags) {
    rows.push_back({std::string(text), flags, nullptr});
    return ItemCount() - 1;
}

int IPopupMenu::AddSeparator() {
    return AddItem({}, Separator);
}

IPopupMenu& IPopupMenu::AddSubmenu(std::string_view text) {
    rows.push_back({std::string(text), 0, std::make_unique<IPopupMenu>()});
    return *rows.back().submenu;
}

const IPopupMenu::Row* IPopupMenu::Item(int index) const {
    return index >= 0 && index < ItemCount() ? &rows[static_cast<std::size_t>(index)] : nullptr;
}

IPopupMenu* IPopupMenu::Submenu(int index) {
    const Row* row = Item(index);
    return row != nullptr ? row->submenu.get() : nullptr;
}

void IPopupMenu::CheckItem(int index, bool on) {
    if (Item(index) == nullptr) return;
    int& flags = rows[static_cast<std::size_t>(index)].flags;
    flags = on ? flags | Checked : flags & ~Checked;
}

void IPopupMenu::UncheckAll() {
    for (Row& row : rows) {
        row.flags &= ~Checked;
        if (row.submenu != nullptr) row.submenu->UncheckAll();
    }
}

void IPopupMenu::ClearChoice() {
    chosen = -1;
    for (Row& row : rows) {
        if (row.submenu != nullptr) row.submenu->ClearChoice();
    }
}

std::string IPopupMenu::ShownText(int index) const {
    const Row* row = Item(index);
    if (row == nullptr) return {};
    constexpr std::array<const char*, 4> kFormats{"", "%1d: ", "%02d: ", "%03d: "};
    if (row->IsSeparator() || prefix <= PrefixNone || prefix > PrefixThreeDigits) return row->text;
    std::array<char, 24> number{};
    std::snprintf(number.data(), number.size(), kFormats[static_cast<std::size_t>(prefix)], index + 1);
    return number.data() + row->text;
}

int IPopupMenu::TotalItemCount() const {
    int count = ItemCount();
    for (const Row& row : rows) {
        if (row.submenu != nullptr) count += row.submenu->TotalItemCount();
    }
    return count;
}

} // namespace Grimworks
