#include "app/ProgressDialog.h"

#include <QProgressDialog>

#include "core/LanguageReader.h"

namespace {

constexpr int kPatience_ms = 400;
constexpr int kBetweenDrawings_ms = 100;  ///< drawing the machine costs as much as generating many an item

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("Progress"), QLatin1String(key));
}

}  // namespace

ProgressDialog::ProgressDialog(QWidget* parent) : parent_(parent) {
    TORNVALE::GenerationProgress::set(this);
}

ProgressDialog::~ProgressDialog() {
    TORNVALE::GenerationProgress::set(nullptr);
}

void ProgressDialog::begin(int count) {
    done_ = 0;
    sinceDrawn_.invalidate();
    if (count < 2)
        return;
    dialog_ = new QProgressDialog(textOf("Generating").arg(QString()), textOf("Cancel"), 0, count,
                                  parent_);  // deleted by end()
    dialog_->setWindowTitle(textOf("Title"));
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setMinimumDuration(kPatience_ms);
    dialog_->setAutoClose(false);
    dialog_->setAutoReset(false);
}

bool ProgressDialog::step(const QString& itemName) {
    if (dialog_.isNull())
        return true;
    const int done = done_++;
    dialog_->setLabelText(textOf("Generating").arg(itemName));
    if (!sinceDrawn_.isValid() || sinceDrawn_.elapsed() >= kBetweenDrawings_ms) {
        dialog_->setValue(done);  // lets all windows draw themselves
        sinceDrawn_.start();
    } else {
        dialog_->repaint();  // this one alone: the next item may be a long one
    }
    return !dialog_->wasCanceled();
}

void ProgressDialog::end() {
    delete dialog_;
}
