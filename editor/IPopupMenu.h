#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// A pop-up menu as data: rows of text, some of them with a submenu. The window layer shows it and stores
/// which row was chosen. Editor thread.
class IPopupMenu {
public:
    /// How numbers are put before the rows' texts when shown: none, "%1d: ", "%02d: ", "%03d: "; counted
    /// from 1.
    enum Prefix : int { PrefixNone = 0, PrefixOneDigit = 1, PrefixTwoDigits = 2, PrefixThreeDigits = 3 };

    /// Bits of a row's flags.
    enum Flag : int { Grayed = 1, Disabled = 2, Checked = 4, Separator = 8 };

    struct Row {
        std::string text;
        int flags = 0;
        std::unique_ptr<IPopupMenu> submenu; ///< null for a plain row

        [[nodiscard]] bool IsSeparator() const { return (flags & Separator) != 0; }
        [[nodiscard]] bool IsChecked() const { return (flags & Checked) != 0; }
        [[nodiscard]] bool CanBeChosen() const {
            return (flags & (Grayed | Disabled | Separator)) == 0 && submenu == nullptr;
        }
    };

    /// Appends a row; gives its index.
    int AddItem(std::string_view text, int flags = 0);
    int AddSeparator();

    /// Appends a row that opens a submenu, and gives that menu to be filled. The reference stays good while
    /// this menu lives.
    IPopupMenu& AddSubmenu(std::string_view text);

    [[nodiscard]] int ItemCount() const { return static_cast<int>(rows.size()); }

    /// Null for a bad index.
    [[nodiscard]] const Row* Item(int index) const;
    [[nodiscard]] IPopupMenu* Submenu(int index);

    /// Sets or clears the check mark of a row; a bad index does nothing.
    void CheckItem(int index, bool on);

    /// Clears the check marks here and in all submenus.
    void UncheckAll();

    /// Forgets which rows were chosen, here and in all submenus.
    void ClearChoice();

    void SetPrefix(int digits) { prefix = digits; }
    [[nodiscard]] int GetPrefix() const { return prefix; }

    /// The text of a row as it is shown, prefix included; empty for a bad index.
    [[nodiscard]] std::string ShownText(int index) const;

    /// Index of the row that was chosen in this very menu, -1 for none.
    [[nodiscard]] int ChosenItem() const { return chosen; }
    void SetChosenItem(int index) { chosen = index; }

    /// Number of rows here and in all submenus: what the consecutive ids of the window layers run to.
    [[nodiscard]] int TotalItemCount() const;

private:
    std::vector<Row> rows;
    int prefix = PrefixNone;
    int chosen = -1;
};

} // namespace Grimworks
