#include "tools/GetToolWidget.h"

#include <QHBoxLayout>
#include <QIcon>

#include "core/LanguageReader.h"
#include "core/WindowKeys.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace TORNVALE {

namespace {
QString text(const char* key) {
    return LanguageReader::instance().text(QStringLiteral("GetToolWidget"), QLatin1String(key));
}
}  // namespace

GetToolWidget::GetToolWidget(QWidget* parent)
    : QWidget(parent),
      tools_(new QComboBox(this)),                            // owned by this widget
      accept_(new QPushButton(text("AcceptButton"), this)) {  // owned by this widget
    setWindowFlag(Qt::Window);
    setWindowTitle(text("Title"));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Tools.png")));
    tools_->setObjectName(QStringLiteral("Tools"));
    tools_->setMinimumContentsLength(28);
    accept_->setObjectName(QStringLiteral("AcceptButton"));
    auto* row = new QHBoxLayout(this);  // owned by this widget
    row->addWidget(tools_, 1);
    row->addWidget(accept_);
    connect(accept_, &QPushButton::clicked, this, &GetToolWidget::accept);
    closeOnEscape(*this);
    refresh();
}

void GetToolWidget::refresh() {
    const QString chosen = tools_->currentText();
    tools_->clear();
    for (const ToolData* tool : ToolsManager::instance().installedTools())
        tools_->addItem(tool->displayText());
    tools_->setCurrentIndex(qMax(0, tools_->findText(chosen)));
    accept_->setEnabled(tools_->count() > 0);
}

void GetToolWidget::accept() {
    const QString chosen = tools_->currentText();
    close();
    Q_EMIT toolChosen(chosen);
}

void GetToolWidget::showEvent(QShowEvent* event) {
    refresh();
    QWidget::showEvent(event);
}

}  // namespace TORNVALE
