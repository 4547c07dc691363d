#include "BatchTestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>
#include <QTextCodec>

#include "support/TestSupport.h"

namespace {

QString axisXml(const char* name, int id, const char* lower, const char* upper) {
    return QStringLiteral(
               "<axis><name>%1</name><nickName>%1</nickName><homePosition>0</homePosition>"
               "<maxVelocity>60000</maxVelocity><lower>%3</lower><upper>%4</upper><jerk>50000</jerk>"
               "<acceleration>2000</acceleration><color>1 1 1</color><initialization>0 0 0</initialization>"
               "<direction>%5</direction><type>%6</type><modelPath/><id>%2</id></axis>")
        .arg(name)
        .arg(id)
        .arg(lower, upper, id == 4 ? "0 0 1" : "1 0 0", id > 3 ? "ROTATION" : "LINEAR");
}

}  // namespace

const char* const kProgram = "G0 X0 Y0 Z50\nG1 Z-5 F3000\nG1 X100\nG1 Y80\nG0 Z50\n";

QByteArray machineXml() {
    QString axes;
    axes += axisXml("X", 1, "-500", "500") + axisXml("Y", 2, "-500", "500") + axisXml("Z", 3, "-300", "300");
    axes += axisXml("C", 4, "-360", "360") + axisXml("A", 5, "-120", "120");
    return (QStringLiteral(
                "<?xml version=\"1.0\" encoding=\"UTF-8\"?><root><machineParameters/><numericalAxis>") +
            axes +
            QStringLiteral(
                "</numericalAxis><nonNumericalAxis/><spindle><s><name>T1</name>"
                "<initialization>0 0 100 0</initialization></s></spindle>"
                "<interpolationParameters><interpolationTime>4</interpolationTime>"
                "<rapidThreshold>30000</rapidThreshold></interpolationParameters>"
                "<userCoordinateSystem><w><name>G54</name><initialization>10 20 30</initialization>"
                "<kinematicChain><c>X-&gt;Y-&gt;Z-&gt;C-&gt;A</c></kinematicChain></w>"
                "<w><name>G55</name><initialization>0 0 0</initialization>"
                "<kinematicChain><c>X-&gt;Y-&gt;Z</c></kinematicChain></w></userCoordinateSystem>"
                "<userCommand/></root>"))
        .toUtf8();
}

QByteArray toolsJson() {
    return R"({"version":"1.0.0.0","tool0":{"Index":0,"SpindleNo":1,"Length":40,"InstallationName":"A"},)"
           R"("tool1":{"Index":7,"SpindleNo":1,"Length":65.5,"InstallationName":"A"}})";
}

void Batch::SetUp() {
    // Names of files reach the executable in UTF-8, whatever the locale of the test's shell.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    write("data/data.ini", "[Config]\nUsedConfig=machineSample/m.xml\n");
    write("data/machineSample/m.xml", machineXml());
    write("data/Tornvale3.3.0.5.rc", "FILEVERSION 3,3,0,5\n");
    write("data/toollib.json", toolsJson());
    write("program.nc", kProgram);
}

void Batch::write(const QString& name, const QByteArray& content) const {
    QDir().mkpath(QFileInfo(path(name)).absolutePath());
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
}

QByteArray Batch::read(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Finished Batch::run(const QStringList& arguments, const QByteArray& input) const {
    return runBare(QStringList{"--data", path("data")} + arguments, input);
}

Finished Batch::runBare(const QStringList& arguments, const QByteArray& input) const {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_QPA_PLATFORM");  // the tool sets it itself
    environment.remove("DISPLAY");
    for (const auto& [name, value] : variables_)
        environment.insert(name, value);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder_.path());
    process.start(QStringLiteral(TORNVALE_BATCH), arguments);
    EXPECT_TRUE(process.waitForStarted(10000)) << TORNVALE_BATCH;
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << arguments.join(' ').toStdString();
    return {process.exitCode(), process.readAllStandardOutput(),
            QString::fromUtf8(process.readAllStandardError())};
}

void Batch::expectError(const QStringList& arguments, int status, const QString& place,
                        const QString& part) const {
    const Finished result = run(arguments);
    const std::string call = arguments.join(' ').toStdString();
    EXPECT_EQ(result.status, status) << call;
    EXPECT_EQ(result.err.count('\n'), 1) << call << "\n" << result.err.toStdString();
    EXPECT_TRUE(result.err.startsWith("tornvale-batch: " + place + ": ")) << call << "\n"
                                                                          << result.err.toStdString();
    EXPECT_TRUE(result.err.contains(part)) << call << "\n" << result.err.toStdString();
    EXPECT_EQ(result.out, QByteArray()) << call;
}

QJsonObject Batch::object(const Finished& result) {
    const QJsonDocument document = QJsonDocument::fromJson(result.out);
    EXPECT_TRUE(document.isObject()) << result.out.toStdString() << result.err.toStdString();
    return document.object();
}

QByteArray Batch::isoCode() const {
    return run({"convert", "--section", "IsoCode", "program.nc"}).out;
}
