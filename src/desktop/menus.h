// The menus of the main window, built from the command table.
#pragma once

#include <QObject>
#include <QString>
#include <string_view>
#include <vector>

#include "session/commands.h"

class QAction;
class QMainWindow;
class QMenu;

namespace orvantis {

class Menus : public QObject {
  public:
    /// Puts all menus into the window's menu bar, and the keys of their commands on the window.
    explicit Menus(QMainWindow& window);

    /// Brings captions, marks and visibility in step with the session.
    void RefreshMarks();

    /// What opening a menu does: its entries are enabled as things stand.
    void Open(std::string_view menu);

    /// Runs a command as a click on its entry does, whatever the entry's state is.
    void Run(const Command& command);

  private:
    struct Entry {
        const Command* command = nullptr;
        QAction* action = nullptr;
    };
    struct Menu {
        std::string_view caption;
        std::string_view submenu;  // "" a menu of the bar
        QMenu* menu = nullptr;
    };

    QMenu* MenuOf(QMainWindow& window, const Command& command);
    QMenu* FindMenu(std::string_view caption, std::string_view submenu) const;
    void AddEntry(QMainWindow& window, const Command& command);

    std::vector<Menu> menus_;
    std::vector<Entry> entries_;
};

}  // namespace orvantis
