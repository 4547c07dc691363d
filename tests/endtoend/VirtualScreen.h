#pragma once

#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <functional>

/// Asks until the answer is yes; false when that takes longer than any machine needs.
[[nodiscard]] bool waitUntil(const std::function<bool()>& isSo);

/// An X server with a window manager of the test's own, so that neither the developer's screen nor other
/// tests see keys and clicks. It ends with this object.
class VirtualScreen {
  public:
    VirtualScreen();
    ~VirtualScreen();
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    /// Empty when the server did not start.
    [[nodiscard]] QString display() const { return display_; }
    /// The environment of a program that is to be seen on this screen.
    [[nodiscard]] QProcessEnvironment environment() const;

    /// The visible window whose title contains this text; 0 when there is none. The one found last counts:
    /// window managers keep windows of their own.
    [[nodiscard]] int window(const QString& title) const;
    /// Whether a program has made such a window, shown or not.
    [[nodiscard]] bool isMade(const QString& title) const;
    /// Runs xdotool with these arguments; its output, and a failed test when it fails.
    QString tell(const QStringList& arguments) const;
    /// To the window that has the keys.
    void press(const QString& key) const;
    void click(int x, int y) const;
    /// Brings a window to the front and gives it the keys.
    void activate(int window) const;
    /// Lets the window manager stand still, so that no new window appears, or go on.
    void holdManager(bool isHeld) const;
    /// What the whole screen shows.
    [[nodiscard]] QImage picture() const;

  private:
    QString run(const QString& program, const QStringList& arguments, bool mayFail) const;

    QProcess server_;
    QProcess manager_;
    QString display_;
};
