#pragma once

#include <QIcon>
#include <QPointer>
#include <QRegularExpression>
#include <QSlider>
#include <QStringList>
#include <QWidget>
#include <functional>

#include "machine/PlaybackStop.h"

class MotionNodeManager;
class QAbstractButton;
class QHBoxLayout;
class QTimer;

/// A slider that tells when the user takes hold of it, before it moves.
class mySlider : public QSlider {
    Q_OBJECT
  public:
    using QSlider::QSlider;

  Q_SIGNALS:
    void emit_status();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

namespace TORNVALE {

/// The playback window: plays emitted code on the machine (MotionNodeManager::instance()), one line a tick of
/// 2 ms, with a slider over the lines, speed steps and loop. A tool window that stays on top. A step above 1
/// leaves lines out, and the last line is not played.
class myTimer : public QWidget, public PlaybackStop {
    Q_OBJECT
  public:
    /// The process-wide window, made at first use.
    static myTimer& instance();
    /// Closes the process-wide window when there is one; it is a full reset.
    static void closeIfOpen();
    explicit myTimer(QWidget* parent = nullptr);
    ~myTimer() override;
    myTimer(const myTimer&) = delete;
    myTimer& operator=(const myTimer&) = delete;

    /// Brings the machine home and takes the lines of `text`, without empty ones, as the program.
    void SetAnimationText(const QString& text);
    [[nodiscard]] int lineCount() const { return lines_.size(); }
    /// Index of the next line; one number for the whole process.
    [[nodiscard]] static int currentLine();
    [[nodiscard]] int step() const { return step_; }
    [[nodiscard]] bool isPlaying() const;
    /// Whether the process-wide window plays just now.
    [[nodiscard]] static bool isAnyPlaying();
    /// Told of each new program of any playback window; an empty function ends that.
    static void setProgramListener(std::function<void(const QString& text)> listener);

    [[nodiscard]] bool stopOnContact() const override;
    void stop() override;
    /// What the timer does every 2 ms.
    void tick();

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void buildWindow();
    QAbstractButton* addButton(QAbstractButton* button, const char* key, const QIcon& icon, QHBoxLayout& row);
    MotionNodeManager* attach();
    void playOrPause();
    void start();
    void rewind(int step);
    void resetPlayback();
    void bringHome();
    void changeStep(int change);
    void takeSlider();
    void scrubTo(int line);
    void playFile();
    [[nodiscard]] bool delayAt(const QString& line) const;
    void waitOneSecond();
    void endOfProgram();

    static constexpr int kMaximumStep = 10;
    static constexpr int kMinimumStep = 1;

    QStringList lines_;
    int step_ = 1;
    QTimer* timer_;
    QRegularExpression delayPattern_{QStringLiteral("(DLY,\\d+)")};
    QIcon playIcon_;
    QIcon pauseIcon_;
    QAbstractButton* playButton_ = nullptr;
    QAbstractButton* resetButton_ = nullptr;
    QAbstractButton* loopButton_ = nullptr;
    QAbstractButton* stopOnCollised_ = nullptr;
    mySlider* slider_ = nullptr;
    QPointer<QTimer> pendingDelay_;
    QPointer<MotionNodeManager> manager_;
};

}  // namespace TORNVALE
