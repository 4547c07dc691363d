#include "core/getUniquelyIdentifies.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoNode.h>

#include <QDebug>
#include <QFile>

#include "core/InstallationFolder.h"
#include "core/UserDialogs.h"
#include "core/calc/UniqueNumber.h"

getUniquelyIdentifies::getUniquelyIdentifies() {
    SoDB::init();
    reload();
}

getUniquelyIdentifies& getUniquelyIdentifies::instance() {
    static getUniquelyIdentifies* const names =
        new getUniquelyIdentifies;  // owned by nobody: lives as long as the process
    return *names;
}

void getUniquelyIdentifies::reload() {
    path_ = installationPath(QStringLiteral("data/UniquelyIdentifies.json"));
    names_ = {};
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        const QString text = QStringLiteral("文件打开失败...文件路径\n\r") + path_;
        qDebug().noquote() << text;
        userDialogs().tell(UserDialogs::Kind::Warning, QStringLiteral("警告"), text);
        return;
    }
    Diagnostics diagnostics;
    names_ = parseUniqueNames(file.readAll(), diagnostics);
    for (const Diagnostic& entry : diagnostics.entries)
        qDebug().noquote() << entry.text;
}

int getUniquelyIdentifies::makeUniquelyIdentifies(const QVector<SoNode*>& nodes) const {
    QStringList names;
    names.reserve(nodes.size());
    for (const SoNode* node : nodes)
        names.append(QString::fromUtf8(node->getName().getString()));
    const int number = nextNumberOfSceneNames(names);
    if (number < 0) {
        qDebug().noquote() << QStringLiteral("后缀转换为int类型失败.文件:%1 行号:%2")
                                  .arg(QStringLiteral(__FILE__), QString::number(__LINE__));
    }
    return number;
}

int getUniquelyIdentifies::makeUniquelyIdentifies(const QStringList& names) const {
    return nextNumberOfTexts(names);
}
