#include "InstallationCopy.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSettings>
#include <QSharedMemory>
#include <QSystemSemaphore>
#include <QThread>
#include <QUuid>
#include <filesystem>

#include "core/SingleInstanceGuard.h"
#include "core/calc/LockKeys.h"
#include "geometry/GeometryTestSupport.h"
#include "support/TestSupport.h"

namespace {

constexpr int kPatience_ms = 60000;

/// A hard link where the file system allows one: the programs are large.
void bring(const QString& program, const QString& target) {
    std::error_code failed;
    std::filesystem::create_hard_link(program.toStdString(), target.toStdString(), failed);
    const bool there = !failed || QFile::copy(program, target);
    ASSERT_TRUE(there) << program.toStdString();
}

QJsonObject jsonFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QJsonDocument::fromJson(file.readAll()).object();
}

QVector<QJsonObject> jsonLines(const QString& path) {
    QVector<QJsonObject> objects;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return objects;
    while (!file.atEnd())
        objects.append(QJsonDocument::fromJson(file.readLine()).object());
    return objects;
}

}  // namespace

QByteArray smallModel() {
    return binaryStl(boxTriangles(SbVec3f(10, 10, 10)));
}

QByteArray smallPostProcessor() {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<PostProcessor>
  <Regulation Rapid="" Linear="" RapidMovement="G0" UserHeaderTail="true" MultiChain="0" OutputDir="output"/>
  <Configulation Name="Small" NickName="Small" Image="" Prefix="S_" Suffix=".nc">
    <Line>%</Line><Coordinate>G54</Coordinate><Line>M30</Line></Configulation>
</PostProcessor>)";
}

QByteArray smallMachine() {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<root>
  <machineParameters><machineType>Small &lt;b&gt;machine&lt;/b&gt;</machineType><type>Small</type>
    <serialNumber>S-77</serialNumber><kinematicChain><chain>X->C</chain></kinematicChain></machineParameters>
  <numericalAxis>
    <axis><name>X</name><nickName>X</nickName><homePosition>5</homePosition><maxVelocity>60000</maxVelocity>
      <lower>-10.5</lower><upper>300</upper><jerk>40000</jerk><acceleration>4000</acceleration>
      <color>1 1 1</color><initialization>0 0 0</initialization><direction>1 0 0</direction>
      <type>LINEAR</type><modelPath>models/Box.stl</modelPath><id/></axis>
    <axis><name>C</name><nickName>B</nickName><homePosition>0</homePosition><maxVelocity>18000</maxVelocity>
      <lower>-360</lower><upper>360</upper><jerk>15000</jerk><acceleration>1200</acceleration>
      <color>1 1 1</color><initialization>0 0 0</initialization><direction>0 0 1</direction>
      <type>ROTATION</type><modelPath>models/Box.stl</modelPath><id/></axis>
  </numericalAxis>
  <nonNumericalAxis/>
  <spindle><spindle><name>T1</name><initialization>0 0 100 0</initialization><startString>M3 S#</startString>
    <stopString>M5</stopString><toolChangeString>M6 T#</toolChangeString><range>12</range>
    <coaxial>T2</coaxial><parent>X->C</parent><color>1 1 1</color><direction>0 0 -1</direction></spindle></spindle>
  <interpolationParameters><interpolationTime>4</interpolationTime><minAcceleration>300</minAcceleration>
    <rapidThreshold>50000</rapidThreshold><decelerationAngle>10</decelerationAngle>
    <angleThreshold>85</angleThreshold><angleMaxFeedrate>1200</angleMaxFeedrate><deltaG0>100</deltaG0>
    <deltaG1>50</deltaG1><interpolationSmooth>0</interpolationSmooth></interpolationParameters>
  <userCoordinateSystem><wcs><parent/><nickName>left</nickName><name>G54</name>
    <kinematicChain><chain>X->C</chain></kinematicChain><initialization>1 2 3</initialization></wcs>
  </userCoordinateSystem>
  <userCommand><delay>G4 F1</delay><startList/></userCommand>
</root>
)";
}

InstallationCopy::InstallationCopy() : outerTemporary_(qgetenv("TMPDIR")) {
    EXPECT_TRUE(folder_.isValid());
    bring(QStringLiteral(TORNVALE_PROGRAM), path("Tornvale"));
    bring(QStringLiteral(TORNVALE_PROBE), path("probe"));
    QDir().mkpath(path("tmp"));
    qputenv("TMPDIR", path("tmp").toLocal8Bit());
    copyLanguages();
    write("Tornvale3.3.0.5.rc", "FILEVERSION 3,3,0,5\n");
    write("data.ini",
          "[MainInterface]\nLanguage=English\n[Config]\nUsedConfig=machineSample/Small.xml\n"
          "[StatusPreProcessing]\nPostProcessor=UserPostProcessor/Small.xml\n");
    write("UserPostProcessor/Small.xml", smallPostProcessor());
    QFile names(shippedInstallation() + "/data/UniquelyIdentifies.json");
    EXPECT_TRUE(names.open(QIODevice::ReadOnly));
    write("data/UniquelyIdentifies.json", names.readAll());
    write("models/Box.stl", smallModel());
    write("machineSample/Small.xml", smallMachine());
    write("machineSample/machineSample.xml", smallMachine());
}

InstallationCopy::~InstallationCopy() {
    for (const QString& title : titles_) {
        { const SingleInstanceGuard cleared(title); }
        const QSystemSemaphore removed(lockKeys(title).memLockKey, 1, QSystemSemaphore::Create);
    }
    if (outerTemporary_.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", outerTemporary_);
}

void InstallationCopy::copyLanguages() {
    const QString mark = QUuid::createUuid().toString(QUuid::WithoutBraces);
    for (const char* name : {"chinese", "english", "russia"}) {
        const QString file = QStringLiteral("language/%1.json").arg(name);
        QJsonObject table = jsonFile(shippedInstallation() + "/" + file);
        QJsonObject main = table["Main"].toObject();
        main["Title"] = main["Title"].toString() + " " + mark;
        titles_.append(main["Title"].toString());
        table["Main"] = main;
        write(file, QJsonDocument(table).toJson());
    }
    titles_.append(QString());  // the title of a start without a language
}

QString InstallationCopy::path(const QString& name) const {
    return name.isEmpty() ? folder_.path() : folder_.filePath(name);
}

void InstallationCopy::write(const QString& name, const QByteArray& content) const {
    QDir().mkpath(QFileInfo(path(name)).absolutePath());
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path(name).toStdString();
    ASSERT_EQ(file.write(content), content.size());
}

QByteArray InstallationCopy::read(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void InstallationCopy::remove(const QString& name) const {
    ASSERT_TRUE(QFile::remove(path(name))) << name.toStdString();
}

void InstallationCopy::setLanguage(const QString& language) const {
    QSettings(path("data.ini"), QSettings::IniFormat).setValue("MainInterface/Language", language);
}

QString InstallationCopy::text(const QString& language, const QString& group, const QString& key) const {
    QJsonObject object = jsonFile(path("language/" + language + ".json"));
    for (const QString& step : group.split('/'))
        object = object[step].toObject();
    return object[key].toString();
}

QString InstallationCopy::setting(const QString& key) const {
    return QSettings(path("data.ini"), QSettings::IniFormat).value(key).toString();
}

std::unique_ptr<QProcess> InstallationCopy::start(const QString& program, const QStringList& arguments,
                                                  const QStringList& environment,
                                                  const QString& workingDirectory) const {
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert("QT_QPA_PLATFORM", "offscreen");
    for (const QString& variable : environment)
        variables.insert(variable.section('=', 0, 0), variable.section('=', 1));
    process->setProcessEnvironment(variables);
    process->setWorkingDirectory(workingDirectory.isEmpty() ? path() : workingDirectory);
    process->start(path(program), arguments);
    EXPECT_TRUE(process->waitForStarted(kPatience_ms)) << process->errorString().toStdString();
    return process;
}

ProgramResult InstallationCopy::probe(const QStringList& arguments, const QStringList& environment,
                                      const QString& workingDirectory) const {
    const QString record = path("record-" + QUuid::createUuid().toString(QUuid::WithoutBraces));
    const auto process = start(
        "probe", arguments, QStringList(environment) << "TORNVALE_PROBE_RECORD=" + record, workingDirectory);
    return finish(*process, record);
}

ProgramResult InstallationCopy::finish(QProcess& process, const QString& record) {
    ProgramResult result;
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(kPatience_ms)) {
        ADD_FAILURE() << "the process hangs";
        process.kill();
        process.waitForFinished(kPatience_ms);
    }
    result.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.output = QString::fromUtf8(process.readAllStandardOutput()).split('\n');
    if (!record.isEmpty())
        result.record = jsonLines(record);
    return result;
}

bool InstallationCopy::waitForOwner(const QString& title) {
    QSharedMemory segment(lockKeys(title).sharedmemKey);
    for (int i = 0; i < kPatience_ms / 10; ++i) {
        if (segment.attach()) {
            segment.detach();
            return true;
        }
        QThread::msleep(10);
    }
    return false;
}
