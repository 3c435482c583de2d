#include "desktop/menus.h"

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <algorithm>
#include <string>

#include "desktop/window_text.h"
#include "session/session_state.h"
#include "text/code_page.h"

namespace orvantis {

namespace {

constexpr std::string_view kLine = "-";

// An entry's caption with its key behind it.
QString EntryText(const Command& command, const std::string& caption) {
    QString text = WindowText(caption);
    if (!command.shortcut.empty()) {
        const QKeySequence key(WindowText(command.shortcut));
        text += QLatin1Char('\t') + key.toString(QKeySequence::NativeText);
    }
    return text;
}

bool HasButton(const Command& command) {
    const auto buttons = CommandButtons();
    return std::any_of(buttons.begin(), buttons.end(), [&](const CommandButton& button) {
        return button.menu == command.menu && button.caption == command.caption;
    });
}

}  // namespace

Menus::Menus(QMainWindow& window) : QObject(&window) {
    for (const Command& command : Commands()) AddEntry(window, command);
    for (const Menu& menu : menus_) {
        if (menu.submenu.empty()) Open(menu.caption);
    }
    RefreshMarks();
}

QMenu* Menus::FindMenu(std::string_view caption, std::string_view submenu) const {
    for (const Menu& menu : menus_) {
        if (menu.caption == caption && menu.submenu == submenu) return menu.menu;
    }
    return nullptr;
}

QMenu* Menus::MenuOf(QMainWindow& window, const Command& command) {
    if (QMenu* found = FindMenu(command.menu, command.submenu)) return found;
    QMenu* menu = nullptr;
    if (command.submenu.empty()) {
        menu = window.menuBar()->addMenu(WindowText(command.menu));
        connect(menu, &QMenu::aboutToShow, this, [this, name = command.menu] { Open(name); });
    } else {
        Command parent = command;
        parent.submenu = "";
        menu = MenuOf(window, parent)->addMenu(WindowText(command.submenu));
    }
    menus_.push_back({command.menu, command.submenu, menu});
    return menu;
}

void Menus::AddEntry(QMainWindow& window, const Command& command) {
    QMenu* menu = MenuOf(window, command);
    QAction* action = command.caption == kLine
                          ? menu->addSeparator()
                          : menu->addAction(EntryText(command, std::string(command.caption)));
    action->setCheckable(command.isChecked != nullptr);
    connect(action, &QAction::triggered, this, [this, &command] { Run(command); });
    entries_.push_back({&command, action});
    if (command.shortcut.empty() || command.hidden) return;

    // The key isn't the entry's own: that would stay dead while the entry is shown as it was when
    // its menu was last opened. Where a button does the same, the key is the button's, which is
    // there whatever the entry shows: so a user without a previous view is asked about zooming out.
    auto* key = new QShortcut(QKeySequence(WindowText(command.shortcut)), &window);
    connect(key, &QShortcut::activated, this, [this, action, &command] {
        Open(command.menu);
        if (action->isEnabled() || HasButton(command)) Run(command);
    });
}

void Menus::RefreshMarks() {
    for (const Entry& entry : entries_) {
        const CommandLook look = LookOf(*entry.command);
        entry.action->setVisible(look.visible);
        if (entry.command->caption != kLine && look.visible) {
            entry.action->setText(EntryText(*entry.command, look.caption));
        }
        entry.action->setChecked(look.checked);
    }
    // A menu all of whose entries are hidden is hidden itself.
    for (const Menu& menu : menus_) {
        bool visible = false;
        for (const Entry& entry : entries_) {
            if (entry.command->menu != menu.caption) continue;
            if (!menu.submenu.empty() && entry.command->submenu != menu.submenu) continue;
            visible = visible || !entry.command->hidden;
        }
        menu.menu->menuAction()->setVisible(visible);
    }
}

void Menus::Open(std::string_view menu) {
    OpenMenu(menu);
    for (const Entry& entry : entries_) {
        if (entry.command->menu == menu) entry.action->setEnabled(LookOf(*entry.command).enabled);
    }
    RefreshMarks();
}

void Menus::Run(const Command& command) {
    if (session.StartupDone != 0) RunCommand(command);
    RefreshMarks();  // a click has moved the entry's own mark
}

}  // namespace orvantis
