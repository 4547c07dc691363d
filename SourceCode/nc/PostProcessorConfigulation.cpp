#include "nc/PostProcessorConfigulation.h"

#include <QDebug>
#include <QFile>

#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "machine/calc/XmlGuard.h"

namespace TORNVALE {

namespace {

QString settingsValue() {
    return ParaReader().value(QStringLiteral("StatusPreProcessing/PostProcessor")).toString();
}

/// At most one byte more than what is read at all, so that a huge file costs no memory.
QByteArray contentOf(QFile& file) {
    return file.read(XmlBounds().bytes + 1);
}

}  // namespace

PrePostAction::PrePostAction(ChainActions actions)
    : Chain(std::move(actions.chain)),
      PreAction(std::move(actions.preAction)),
      PostAction(std::move(actions.postAction)) {}

PrePostAction::~PrePostAction() {
    qInfo().noquote().nospace() << "TORNVALE::PrePostAction"
                                << " has be deconstructed";
}

PostProcessorConfigulation::PostProcessorConfigulation() {
    readFile();
    takeRegulation();
    takeActions();
}

void PostProcessorConfigulation::readFile() {
    const QString path = installationPath(settingsValue());
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << "Open file failed" << Q_FUNC_INFO << "\tUserPostProcessor:" << path;
        return;
    }
    if (const std::optional<XmlError> error = readXml(contentOf(file), document_)) {
        document_.clear();
        qWarning().noquote()
            << QStringLiteral("errorLine:%1 errorColumn:%2").arg(error->line).arg(error->column);
        qDebug().noquote() << path << error->text;
        return;
    }
    root = document_.documentElement();
}

void PostProcessorConfigulation::takeRegulation() {
    std::optional<Regulation> values = readRegulation(root);
    if (!values) {
        qWarning("Initial regulation failed");
        return;
    }
    Rapid = values->rapid;
    Linear = values->linear;
    RapidMovement = values->rapidMovement;
    AccelerationScheme = values->accelerationScheme;
    Prepend = values->prepend;
    if (!values->outputDir.isEmpty())
        OutputDir.setPath(installationPath(values->outputDir));
    UserHeaderTail = values->userHeaderTail;
    MultiChain = values->multiChain;
    entrySequences_ = std::move(values->entry);
    exitSequences_ = std::move(values->exit);
}

void PostProcessorConfigulation::takeActions() {
    std::optional<QVector<ChainActions>> list = readPrePostActions(root);
    if (!list) {
        qWarning("Initial PrePostActions failed");
        return;
    }
    for (ChainActions& actions : *list)
        actions_.append(std::make_shared<PrePostAction>(std::move(actions)));
}

const PrePostAction* PostProcessorConfigulation::actionsOf(const QString& chain) const {
    for (const std::shared_ptr<PrePostAction>& actions : actions_) {
        if (actions->Chain == chain)
            return actions.get();
    }
    return nullptr;
}

QVector<PatternRow> PostProcessorConfigulation::GetPatternData() {
    const QString value = settingsValue();
    if (value.isEmpty()) {
        qDebug().noquote() << installationPath(QStringLiteral("data.ini")) << "\tGet post processor failed";
        return {};
    }
    const QString path = installationPath(value);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug().noquote() << path << "\tOpen file failed";
        return {};
    }
    QDomDocument document;
    if (readXml(contentOf(file), document)) {
        qDebug().noquote() << path << "\tSet content failed";
        return {};
    }
    return patternRows(document.documentElement());
}

}  // namespace TORNVALE
