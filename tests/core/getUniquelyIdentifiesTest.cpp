#include "core/getUniquelyIdentifies.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "core/InstallationFolder.h"
#include "support/TestSupport.h"

namespace {

/// Nodes of the given scene names, released at the end.
class Nodes {
  public:
    explicit Nodes(const QStringList& names) {
        SoDB::init();
        for (const QString& name : names) {
            auto* node = new SoSeparator;  // owned by its reference count
            node->ref();
            node->setName(name.toUtf8().constData());
            nodes_.append(node);
        }
    }
    ~Nodes() {
        for (SoNode* node : nodes_)
            node->unref();
    }
    Nodes(const Nodes&) = delete;
    Nodes& operator=(const Nodes&) = delete;
    [[nodiscard]] const QVector<SoNode*>& list() const { return nodes_; }

  private:
    QVector<SoNode*> nodes_;
};

/// The process-wide object, having read the installation in force.
getUniquelyIdentifies& reread() {
    getUniquelyIdentifies& names = getUniquelyIdentifies::instance();
    names.reload();
    return names;
}

QJsonObject shippedNames() {
    QFile file(shippedInstallation() + "/data/UniquelyIdentifies.json");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object();
}

}  // namespace

TEST(getUniquelyIdentifies, Nodes_GetTheirNextNumber) {
    setInstallationFolder(shippedInstallation());
    const getUniquelyIdentifies& names = reread();
    EXPECT_EQ(names.makeUniquelyIdentifies(QVector<SoNode*>()), 0);
    EXPECT_EQ(names.makeUniquelyIdentifies(Nodes({"A0", "A1"}).list()), 2);
    EXPECT_EQ(names.makeUniquelyIdentifies(Nodes({"A0", "A2"}).list()), 1);
    EXPECT_EQ(names.makeUniquelyIdentifies(Nodes({"A1", "A1", "A3"}).list()), 4);
    EXPECT_EQ(names.makeUniquelyIdentifies(Nodes({"Abc19", "Abc20"}).list()), 1);
    EXPECT_EQ(names.makeUniquelyIdentifies(QStringList{"Abc19", "Abc20"}), 21);
    setInstallationFolder({});
}

TEST(getUniquelyIdentifies, ShippedFile_FillsEveryText) {
    setInstallationFolder(shippedInstallation());
    const UniqueNames& names = reread().names();
    const QJsonObject file = shippedNames();
    EXPECT_EQ(file.size(), 35);
    EXPECT_EQ(names.userCoordinateSystem, file["userCoordinateSystem"].toString());
    EXPECT_EQ(names.megerItemNamePrefix, file["megerItemNamePrefix"].toString());
    EXPECT_EQ(names.section, file["section"].toString());
    EXPECT_EQ(names.mergeOutputFilePrefix, file["mergeOutputFilePrefix"].toString());
    EXPECT_EQ(names.userFixtureBlockFlag, file["userFixtureBlockFlag"].toString());
    for (const QString& key : file.keys()) {
        EXPECT_FALSE(file[key].toString().isEmpty()) << key.toStdString();
        EXPECT_FALSE(file[key].toString().contains(QRegularExpression("\\d"))) << key.toStdString();
    }
    setInstallationFolder({});
}

TEST(UniqueNames, EveryKey_GoesToTheFieldOfItsName) {
    QJsonObject object;
    for (const QString& key : shippedNames().keys())
        object[key] = "<" + key + ">";
    Diagnostics diagnostics;
    const UniqueNames names = parseUniqueNames(QJsonDocument(object).toJson(), diagnostics);
    EXPECT_TRUE(diagnostics.entries.empty());
    EXPECT_EQ(names.trajectoryNodeNamePrefix, QString("<trajectoryNodeNamePrefix>"));
    EXPECT_EQ(names.rectangularSpiralItemNamePrefix, QString("<rectangularSpiralItemNamePrefix>"));
    EXPECT_EQ(names.consecutiveProcessing, QString("<consecutiveProcessing>"));
    EXPECT_EQ(names.draggerNodeName, QString("<draggerNodeName>"));
    EXPECT_EQ(names.tandemOutputFileExtension, QString("<tandemOutputFileExtension>"));
    EXPECT_EQ(names.rightOutputFilePrefix, QString("<rightOutputFilePrefix>"));
    EXPECT_EQ(names.wcsFlag, QString("<wcsFlag>"));
    EXPECT_EQ(names.workPieceFlag, QString("<workPieceFlag>"));
}

TEST(getUniquelyIdentifies, MissingFile_IsToldAndLeavesEveryTextEmpty) {
    setInstallationFolder(shippedInstallation());
    getUniquelyIdentifies& names = reread();
    const TemporaryInstallation installation;
    const QString path = installation.file("data/UniquelyIdentifies.json");
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Warning, "警告", "文件打开失败...文件路径\n\r" + path);
    const LogCapture log;
    names.reload();
    EXPECT_EQ(names.names().userCoordinateSystem, QString());
    EXPECT_EQ(names.names().userFixtureBlockFlag, QString());
    EXPECT_EQ(names.path(), path);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0].type, QtDebugMsg);
    EXPECT_EQ(names.makeUniquelyIdentifies(QStringList{"A3"}), 4);
}

TEST(getUniquelyIdentifies, FileThatDoesNotParse_IsLoggedAndLeavesEveryTextEmpty) {
    setInstallationFolder(shippedInstallation());
    getUniquelyIdentifies& names = reread();
    const TemporaryInstallation installation;
    for (const QByteArray& content : {QByteArray("{"), QByteArray(""), QByteArray("\xff\xfe\x00", 3),
                                      QByteArray("{\"ucsFlag\": \"x\"} trailing")}) {
        installation.write("data/UniquelyIdentifies.json", content);
        const LogCapture log;
        names.reload();
        EXPECT_EQ(names.names().ucsFlag, QString());
        ASSERT_EQ(log.lines().size(), 1U);
        EXPECT_EQ(log.lines()[0].type, QtDebugMsg);
        EXPECT_EQ(log.count("json解析失败..."), 1);
    }
}

TEST(UniqueNames, ValueThatIsNoText_IsEmpty) {
    Diagnostics diagnostics;
    const UniqueNames names = parseUniqueNames("{\"ucsFlag\": 5, \"wcsFlag\": [\"a\"]}", diagnostics);
    EXPECT_EQ(names.ucsFlag, QString());
    EXPECT_EQ(names.wcsFlag, QString());
    EXPECT_TRUE(diagnostics.entries.empty());
}
