#pragma once

#include <QMap>
#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QStringView>
#include <array>

#include "tools/ToolObserver.h"

class AxisBase;
class PlaybackStop;
class SoNode;
class SpindleNode;

/// Hands the words of a played line to the machine's nodes: a letter word moves its axis, an M word switches
/// a spindle or changes its tool. Words and tools that nobody knows are ignored: playback never stops for
/// them.
class CommandProcessor : public QObject, public TORNVALE::ToolObserver {
    Q_OBJECT
  public:
    /// Registers with the tool library and takes the tools that are installed now.
    explicit CommandProcessor(QObject* parent = nullptr);
    ~CommandProcessor() override;
    CommandProcessor(const CommandProcessor&) = delete;
    CommandProcessor& operator=(const CommandProcessor&) = delete;

    /// Letter or M word -> node that acts on it; a later entry of the same key replaces the former. The nodes
    /// are not owned.
    void addCommandMap(const QMap<QString, SoNode*>& map);
    /// M word of a tool change -> spindle.
    void addToolChangeCommandMap(const QMap<QString, SoNode*>& map);

    /// A word such as "X12.5", or a whole line with an "M". True when a tool was changed. Runs per played
    /// word: without an "M" nothing is allocated.
    bool ProcessWord(QStringView word);
    bool HandleSpindleStatusChange(const QString& line);
    void UpdateToolList(QList<ToolData*> tools) override;
    /// Not owned; nullptr for none.
    void setPlayback(PlaybackStop* playback) { playback_ = playback; }

    [[nodiscard]] const QMap<QString, SoNode*>& commandMap() const { return commandMap_; }
    [[nodiscard]] const QMap<QString, SoNode*>& toolChangeCommandMap() const { return toolChangeCommandMap_; }

  Q_SIGNALS:
    /// Collision objects below this path are not the same any more; empty for all.
    void updateCollisionObject(const QStringList& chain);

  private:
    bool changeTool(const QString& line, SpindleNode& spindle);
    void stopPlayback();

    static constexpr int kLetters = 26;
    QMap<QString, SoNode*> commandMap_;
    QMap<QString, SoNode*> toolChangeCommandMap_;
    QRegularExpression mPattern_{QStringLiteral("M\\d{1,3}")};
    std::array<AxisBase*, kLetters> axes_{};  ///< of commandMap_, by letter A to Z
    PlaybackStop* playback_ = nullptr;
};
