#include "geometry/ModelPanel.h"

#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>

#include "core/LanguageReader.h"
#include "geometry/calc/CollisionEngine.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("UserModelNode"),
                                                     QString::fromLatin1(key));
}

QString vectorText(const Eigen::Vector3f& vector) {
    return QStringLiteral("%1 %2 %3")
        .arg(static_cast<double>(vector.x()))
        .arg(static_cast<double>(vector.y()))
        .arg(static_cast<double>(vector.z()));
}

QString transformText(const CollisionTransform& transform) {
    constexpr int kDecimals = 3;
    QStringList lines;
    for (int row = 0; row < 4; ++row) {
        QStringList numbers;
        for (int column = 0; column < 4; ++column) {
            numbers.append(
                QString::number(static_cast<double>(transform.matrix()(row, column)), 'f', kDecimals));
        }
        lines.append(numbers.join(QLatin1Char(' ')));
    }
    return lines.join(QLatin1Char('\n'));
}

}  // namespace

ModelPanel::ModelPanel(QWidget* parent) : QWidget(parent) {
    auto* form = new QFormLayout(this);  // owned by this widget
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    name_ = addRow("Name");
    parent_ = addRow("Parent");
    path_ = addRow("Path");
    center_ = addRow("CollisionObjectCenter");
    max_ = addRow("CollisionObjectMax");
    min_ = addRow("CollisionObjectMin");
    transform_ = new QPlainTextEdit(this);  // owned by this widget
    transform_->setReadOnly(true);
    transform_->setLineWrapMode(QPlainTextEdit::NoWrap);
    transform_->setObjectName(QStringLiteral("CollisionObjectTransform"));
    form->addRow(textOf("CollisionObjectTransform"), transform_);
}

QLabel* ModelPanel::addRow(const char* key) {
    auto* label = new QLabel(this);  // owned by this widget
    label->setObjectName(QString::fromLatin1(key));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    static_cast<QFormLayout*>(layout())->addRow(textOf(key), label);
    return label;
}

void ModelPanel::refresh(const QStringList& chain, const QString& parentName,
                         const fcl::CollisionObject<float>* object) {
    name_->setText(chain.isEmpty() ? QString() : chain.last());
    parent_->setText(parentName);
    path_->setText(chain.join(QLatin1String("->")));
    if (object == nullptr) {
        for (QLabel* label : {center_, max_, min_})
            label->clear();
        transform_->clear();
        return;
    }
    const fcl::AABB<float>& box = object->getAABB();
    center_->setText(vectorText(box.center()));
    max_->setText(vectorText(box.max_));
    min_->setText(vectorText(box.min_));
    transform_->setPlainText(transformText(object->getTransform()));
}
