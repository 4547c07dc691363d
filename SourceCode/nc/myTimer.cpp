#include "nc/myTimer.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCursor>
#include <QDebug>
#include <QFile>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QTimer>
#include <QToolButton>

#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/UserDialogs.h"
#include "machine/MotionNodeManager.h"

namespace {

constexpr int kTick_ms = 2;
constexpr int kDelay_ms = 1000;    // whatever number stands in the delay: it must stay so
constexpr int kDelayedLines = 10;  // a delay then jumps this far ahead
constexpr int kStepAfterReset = 2;

int currentIndex = 0;  // of the process, shared by every window
std::function<void(const QString&)> programListener;
QPointer<TORNVALE::myTimer> theWindow;

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("MyTimer"), QString::fromLatin1(key));
}

QIcon iconOf(const char* file) {
    return QIcon(QStringLiteral(":/Icon/") + QString::fromLatin1(file));
}

}  // namespace

void mySlider::mousePressEvent(QMouseEvent* event) {
    Q_EMIT emit_status();
    QSlider::mousePressEvent(event);
}

void mySlider::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Tab && event->key() != Qt::Key_Escape)
        Q_EMIT emit_status();
    QSlider::keyPressEvent(event);
}

void mySlider::wheelEvent(QWheelEvent* event) {
    Q_EMIT emit_status();
    QSlider::wheelEvent(event);
}

namespace TORNVALE {

myTimer& myTimer::instance() {
    if (theWindow.isNull())
        theWindow =
            new myTimer;  // owned by the process; it has no parent, so that it stays above all windows
    return *theWindow;
}

void myTimer::closeIfOpen() {
    if (!theWindow.isNull())
        theWindow->close();
}

myTimer::myTimer(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint),
      timer_(new QTimer(this)),  // owned by this window
      playIcon_(iconOf("play.png")),
      pauseIcon_(iconOf("pause.png")) {
    setObjectName(QStringLiteral("myTimer"));
    setWindowTitle(textOf("Title"));
    setWindowIcon(playIcon_);
    timer_->setInterval(kTick_ms);
    timer_->setTimerType(Qt::PreciseTimer);
    connect(timer_, &QTimer::timeout, this, &myTimer::tick);
    buildWindow();
    attach();
}

myTimer::~myTimer() {
    if (!manager_.isNull() && manager_->playback() == this)
        manager_->setPlayback(nullptr);
}

/// The machine of the process; it is told who plays on it.
MotionNodeManager* myTimer::attach() {
    manager_ = MotionNodeManager::instance();
    if (!manager_.isNull())
        manager_->setPlayback(this);
    return manager_;
}

// --- window ---

QAbstractButton* myTimer::addButton(QAbstractButton* button, const char* key, const QIcon& icon,
                                    QHBoxLayout& row) {
    constexpr int kIconSize_px = 45;
    button->setObjectName(QString::fromLatin1(key));
    button->setIcon(icon);
    button->setIconSize(QSize(kIconSize_px, kIconSize_px));
    button->setToolTip(textOf(key));
    button->setWhatsThis(textOf(key));
    button->setAccessibleName(textOf(key));
    button->setFocusPolicy(Qt::StrongFocus);
    row.addWidget(button);
    return button;
}

void myTimer::buildWindow() {
    auto* form = new QFormLayout(this);                          // owned by this window
    auto* row = new QHBoxLayout;                                 // owned by the form
    const auto tool = [this] { return new QToolButton(this); };  // owned by this window
    playButton_ = addButton(tool(), "PlayButton", playIcon_, *row);
    connect(playButton_, &QAbstractButton::clicked, this, &myTimer::playOrPause);
    resetButton_ = addButton(tool(), "ResetButton", iconOf("stop.png"), *row);
    connect(resetButton_, &QAbstractButton::clicked, this, &myTimer::resetPlayback);
    connect(addButton(tool(), "ForwardButton", iconOf("forward.png"), *row), &QAbstractButton::clicked, this,
            [this] { changeStep(1); });
    connect(addButton(tool(), "BackwardButton", iconOf("backward.png"), *row), &QAbstractButton::clicked,
            this, [this] { changeStep(-1); });
    loopButton_ = addButton(tool(), "LoopButton", iconOf("loop.png"), *row);
    stopOnCollised_ = addButton(new QCheckBox(this), "StopOnCollised", iconOf("collision.png"),
                                *row);  // owned by this window
    stopOnCollised_->setStyleSheet(QStringLiteral("QCheckBox::indicator { width: 25px; height: 25px; }"));
    for (QAbstractButton* button : {loopButton_, stopOnCollised_}) {
        button->setCheckable(true);
        button->setChecked(true);
    }
    if (ParaReader().isTrue(QStringLiteral("DebugFunction/IsAllowReadIsoCode"))) {
        QToolButton* open = tool();
        open->setArrowType(Qt::DownArrow);
        open->setObjectName(QStringLiteral("OpenButton"));
        row->addWidget(open);
        connect(open, &QAbstractButton::clicked, this, &myTimer::playFile);
    }
    row->addStretch();
    form->addRow(row);
    slider_ = new mySlider(Qt::Horizontal, this);  // owned by this window
    slider_->setAccessibleName(textOf("Title"));
    slider_->setRange(0, 0);
    form->addRow(slider_);
    connect(slider_, &mySlider::emit_status, this, &myTimer::takeSlider);
}

void myTimer::showEvent(QShowEvent* event) {
    attach();
    QWidget::showEvent(event);
    // The mouse that asked for the playback can press play at once.
    layout()->activate();
    move(QCursor::pos() - playButton_->geometry().center());
}

void myTimer::closeEvent(QCloseEvent* event) {
    rewind(kMinimumStep);
    rewind(kStepAfterReset);
    bringHome();
    QWidget::closeEvent(event);
}

// --- buttons ---

bool myTimer::isPlaying() const {
    return timer_->isActive();
}

bool myTimer::stopOnContact() const {
    return stopOnCollised_->isChecked();
}

void myTimer::start() {
    timer_->start();
    playButton_->setIcon(pauseIcon_);
}

void myTimer::stop() {
    timer_->stop();
    playButton_->setIcon(playIcon_);
}

void myTimer::playOrPause() {
    if (timer_->isActive()) {
        stop();
        return;
    }
    disconnect(slider_, &QSlider::valueChanged, this, &myTimer::scrubTo);
    if (!lines_.isEmpty())
        start();
}

/// Back to the first line. After a reset the step is 2, not the 1 of the start: it must stay so.
void myTimer::rewind(int step) {
    stop();
    delete pendingDelay_;
    pendingDelay_.clear();
    step_ = step;
    currentIndex = 0;
    slider_->setValue(0);
}

void myTimer::resetPlayback() {
    rewind(kStepAfterReset);
    bringHome();
}

/// What touched on the way does not touch at home.
void myTimer::bringHome() {
    if (MotionNodeManager* machine = attach()) {
        machine->resetMachine(false, false);
        machine->ResetCollided();
    }
}

void myTimer::changeStep(int change) {
    step_ = qBound(kMinimumStep, step_ + change, kMaximumStep);
}

void myTimer::takeSlider() {
    stop();
    connect(slider_, &QSlider::valueChanged, this, &myTimer::scrubTo, Qt::UniqueConnection);
}

void myTimer::scrubTo(int line) {
    currentIndex = line;
    if (line < lines_.size() && attach() != nullptr)
        manager_->executeLine(lines_[line]);
}

void myTimer::playFile() {
    const QString path =
        userDialogs().openFile(QStringLiteral("Open"), QStringLiteral("."), QStringLiteral("*.nc *.anc"));
    if (path.isEmpty())
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << QStringLiteral("Failed to open file: ") + path;
        return;
    }
    SetAnimationText(QString::fromUtf8(file.readAll()));
    if (!lines_.isEmpty())
        start();
}

// --- playing ---

int myTimer::currentLine() {
    return currentIndex;
}

void myTimer::SetAnimationText(const QString& text) {
    bringHome();
    delete pendingDelay_;
    lines_.clear();
    lines_ = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    disconnect(slider_, &QSlider::valueChanged, this, &myTimer::scrubTo);
    currentIndex = 0;
    slider_->setRange(0, qMax(0, lines_.size() - 1));
    slider_->setValue(0);
    if (programListener)
        programListener(text);
}

bool myTimer::isAnyPlaying() {
    return !theWindow.isNull() && theWindow->isPlaying();
}

void myTimer::setProgramListener(std::function<void(const QString& text)> listener) {
    programListener = std::move(listener);
}

bool myTimer::delayAt(const QString& line) const {
    return line.contains(QLatin1String("DLY,")) && delayPattern_.match(line).hasMatch();
}

void myTimer::waitOneSecond() {
    timer_->stop();
    delete pendingDelay_;
    pendingDelay_ = new QTimer(this);  // owned by this window
    pendingDelay_->setSingleShot(true);
    connect(pendingDelay_, &QTimer::timeout, this, [this] {
        pendingDelay_->deleteLater();
        start();
        currentIndex += kDelayedLines;
    });
    pendingDelay_->start(kDelay_ms);
}

void myTimer::endOfProgram() {
    currentIndex = 0;
    if (!loopButton_->isChecked())
        stop();
}

void myTimer::tick() {
    if (lines_.isEmpty()) {
        stop();
        return;
    }
    // Who is pressing a button that stops must not wait for the frame of one more line.
    if (playButton_->isDown() || resetButton_->isDown())
        return;
    const int last = lines_.size() - 1;
    // A delay among the last lines jumps past the end: the program ends with its last line then.
    const bool isPastTheEnd = currentIndex > last;
    currentIndex = qBound(0, currentIndex, last);
    const QString& line = lines_[currentIndex];
    if (!isPastTheEnd && delayAt(line)) {
        waitOneSecond();
    } else {
        if (manager_ != nullptr)
            manager_->executeLine(line);
        currentIndex += step_;
        if (currentIndex >= last)
            endOfProgram();
    }
    slider_->setValue(currentIndex);
}

}  // namespace TORNVALE
