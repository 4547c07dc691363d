#pragma once

#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "LimitOracle.h"
#include "NcText.h"
#include "ShaftWatch.h"
#include "machine/calc/MachineDescription.h"

/// What a program must contain: its items in the order in which they are to run.
struct PlayedItem {
    int group = 0;  ///< items of one group follow one another
    QString chain;
    int spindle = 0;
    int tool = 0;
    double rpm = 0;
    QString leadIn;
    QString body;
    QString leadOut;
};

/// Plays a program as the machine would, every line one interpolation period, and writes down what must not
/// be:
///
/// * a way that is not that of the items in their order, line by line, with joins between them that begin
///   where the item before ends, lead over the points of its lead-out and of the next one's lead-in, and end
///   where the next begins; a run that does not come back to where its first line stands;
/// * an axis over its speed or acceleration, also when a command line holds the axes for its period;
/// * commands out of place, see ShaftWatch; a body whose spindle stands, turns at another speed, holds
/// another
///   tool or was not checked; an early start elsewhere than T seconds before the end.
///
/// Four things are let pass, each with its reason:
///
/// 1. Over a tool change the axes are not followed: the machine's own cycle moves them, and leaves them at
/// home.
/// 2. The first way behind the tool change at the head of a group begins above the first item, not at home:
/// that
///    is how the planner is to write it.
/// 3. The commands of an early start inside a body do not hold the axes: its whole purpose is that the cut
/// goes
///    on.
/// 4. Lines that stand twice are written once, see LimitOracle::step.
class NcPlayer {
  public:
    struct Options {
        bool isFolded = true;                   ///< neighbouring equal lines became one, ten commands too
        std::optional<double> preLaunchTime_s;  ///< spindles start early
        int groups = 0;                         ///< slots of the pattern
        QStringList known;                      ///< commands that are no spindle's
        std::vector<bool> foldedMotions;        ///< motion lines that stood twice, by their index
    };
    NcPlayer(const MachineDescription& machine, const NcDialect& dialect, std::vector<PlayedItem> items,
             Options options);

    void play(const NcText& program);

    [[nodiscard]] std::string report() const;  ///< empty when all is well
    [[nodiscard]] int earlyStarts() const { return earlyStarts_; }
    [[nodiscard]] int toolChanges() const { return toolChanges_; }
    [[nodiscard]] const LimitOracle& limits() const { return flying_; }

  private:
    struct Body {
        std::vector<NcLine> lines;
        int early = -1;  ///< line in front of which the next spindle starts, counted without folding
        std::vector<int> indexes;  ///< of `lines` before folding
    };
    void object(const NcLine& line, const std::string& text);
    void playCommands(const std::vector<NcLine>& lines, std::size_t from, int count);
    void playEvent(const NcLine& line, const ShaftWatch::Event& event);
    void playStart(const NcLine& line, const ShaftWatch::Event& event);
    void playMotion(const std::vector<NcLine>& lines, std::size_t place);
    void holdAxes(const NcLine& line);
    [[nodiscard]] bool beginsHere(const std::vector<NcLine>& lines, std::size_t place,
                                  const Body& body) const;
    [[nodiscard]] Body bodyOf(const PlayedItem& item) const;
    [[nodiscard]] NcText emitted(const PlayedItem& item, const QString& text) const;
    [[nodiscard]] int earlyLine(int lines) const;
    void beginBody(const NcLine& line, Body body);
    void checkJoin(const NcLine& line);
    /// The way since the last body must lead over the lead-out of `from` and the lead-in of `to`.
    void checkWay(const NcLine& line, const PlayedItem* from, const PlayedItem* to);
    [[nodiscard]] std::size_t toolAxisOf(const QString& chain) const;
    [[nodiscard]] std::vector<double> placeOf(const QString& line, const QString& chain) const;
    void forgetRotation(NcLine& point) const;
    void checkReturn(const NcText& program);
    void finish(const NcText& program);
    [[nodiscard]] const PlayedItem* behind(std::size_t index) const;

    const MachineDescription& machine_;
    NcDialect dialect_;
    std::vector<PlayedItem> items_;
    Options options_;
    ShaftWatch shafts_;
    ShaftWatch beforeFront_;  ///< without the early start in front of a short body
    int frontStart_ = 0;      ///< its spindle
    LimitOracle flying_;      ///< command lines take no time
    LimitOracle holding_;     ///< every line takes a period
    std::vector<std::string> faults_;

    std::size_t next_ = 0;  ///< item whose body comes
    std::optional<Body> body_;
    std::optional<Body> expected_;  ///< of the next item, as the spindles are now
    std::size_t bodyLine_ = 0;
    std::vector<double> lastEnd_;
    std::vector<std::vector<double>> way_;  ///< since the last body, from its last line on
    std::map<int, bool> checked_;
    bool isBehindChange_ = false;
    bool isWayOpen_ = true;  ///< no motion since the last body
    int startsInBody_ = 0;
    int motionIndex_ = -1;
    int earlyStarts_ = 0;
    int toolChanges_ = 0;
};
