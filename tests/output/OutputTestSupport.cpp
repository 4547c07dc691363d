#include "OutputTestSupport.h"

#include "machine/readConfig.h"
#include "nc/TestMachine.h"

using namespace TORNVALE;

namespace {

std::unique_ptr<MachineDescription> twoTables(unsigned period_ms) {
    auto machine = makeTestMachine({{"X", 1}, {"Z", 3}, {"C", 4}, {"A", 5}, {"Y", 2}, {"V", 2}}, period_ms);
    machine->interpolationParameters.rapidThreshold = 50000;
    auto spindle = std::make_unique<spindleStruct>();
    spindle->name = QStringLiteral("T1");
    spindle->startString = QStringLiteral("M3 S#");
    spindle->stopString = QStringLiteral("M5");
    spindle->checkString = QStringLiteral("M93");
    spindle->range = QStringLiteral("1");
    machine->spindles.push_back(std::move(spindle));
    machine->userCommand.delay = QStringLiteral("(DLY,1)");
    machine->rebuildIndex();
    return machine;
}

}  // namespace

PlainItem::PlainItem(QString itemChain, QString itemCode, bool isChecked)
    : chain(std::move(itemChain)), code(std::move(itemCode)), active(isChecked) {}

QList<ProgramItem*> PlainGroup::programItems() const {
    QList<ProgramItem*> list_;
    for (const std::unique_ptr<PlainItem>& item : items)
        list_.append(item.get());
    return list_;
}

PlainItem& PlainGroup::add(const QString& chain, const QString& code, bool active) {
    items.push_back(std::make_unique<PlainItem>(chain, code, active));
    return *items.back();
}

void PlainGroup::setEnds(const QString& chain, const QString& header, const QString& tail,
                         const QString& itemHeader, const QString& itemTail) {
    HeaderTailRecord& record = list->headerTail.add(MachineDescription(), chain);
    record.header = header;
    record.tail = tail;
    record.itemHeader = itemHeader;
    record.itemTail = itemTail;
}

OutputBench::OutputBench(const QByteArray& xml) {
    settings("[StatusPreProcessing]\nPostProcessor=post.xml\n");
    setPeriod(4);
    use(xml);
}

OutputBench::~OutputBench() {
    processor().reload();
    ConfigReader::instance().setDescription(std::make_unique<MachineDescription>());
}

void OutputBench::use(const QByteArray& xml) {
    const LogCapture quiet;
    write("post.xml", xml);
    processor().reload();
    processor().setPlanner([this](const ChainPlan& plan) {
        plans.push_back(plan);
        QString text = plan.header.isEmpty() ? QString() : plan.header + '\n';
        text += plan.preAction;
        for (const ProgramItem* item : plan.items)
            text += item->IsoCode();
        text += plan.postAction;
        return plan.tail.isEmpty() ? text : text + plan.tail + '\n';
    });
}

void OutputBench::useMachinePlanner() {
    processor().setPlanner({});
}

void OutputBench::settings(const QByteArray& lines) {
    write("data.ini", "[MainInterface]\nLanguage=English\n" + lines);
}

void OutputBench::setPeriod(unsigned period_ms) {
    ConfigReader::instance().setDescription(twoTables(period_ms));
}

QString OutputBench::program(const QVector<ProgramGroup*>& groups, const QString& pattern) {
    QString out;
    if (!pattern.isNull() && !processor().choosePattern(pattern))
        return QStringLiteral("no such pattern");
    processor().ProcessGroups(out, groups, !pattern.isNull());
    return out;
}

QByteArray postProcessorFile(const QByteArray& regulation, const QByteArray& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root Suffix=\".nc\"><Regulation " + regulation +
           "/><PrePostActions/>" + content + "</root>";
}

QByteArray oneSlot() {
    return "<Configulation Name=\"p\" NickName=\"P\"><Coordinate>G54</Coordinate></Configulation>";
}
