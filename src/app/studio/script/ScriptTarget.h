// What a command of a script is aimed at.
#pragma once

#include <QPoint>
#include <QRect>
#include <string>

class QWidget;

namespace orv::app {

struct ScriptLine;

/// A place in a widget that a user could click.
struct ScriptTarget {
  QWidget* widget = nullptr;  ///< null: none, and `problem` says why
  QPoint point;               ///< within the widget
  std::string problem;
};

/// Finds what a line names by
/// - `win=NAME`: the window, by its object name; else the active modal one, else any that is shown,
/// - `id=N`, `name=TEXT` (the accessible name, or the text of a button): both may be given,
/// - `row=TEXT`, or `row=TEXT/TEXT` of a tree: a row in that list, tree or table; `column=N`,
/// - `menu=TEXT`: an entry of a menu bar, `action=TEXT`: one of the menu that is open,
/// - `at=X,Y`: in place of the middle.
/// The first that is visible wins; one that is scrolled out of sight is scrolled into it.
ScriptTarget FindTarget(const ScriptLine& line);

/// The windows that are shown, in the order of their object names.
QList<QWidget*> ShownWindows();
/// The window of that object name; empty: the one in front. Null when it isn't shown.
QWidget* WindowNamed(const std::string& name);

/// What a screen reader would say.
std::string AccessibleNameOf(QWidget& widget);

}  // namespace orv::app
