#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <limits>
#include <random>

#include "DocumentBench.h"
#include "geometry/modelNode.h"
#include "machine/MotionNodeManager.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

// Documents that nobody has written with good intentions: the window stays whole, and can save and open the
// next job.

namespace {

using Random = std::mt19937;

QJsonValue strangeValue(Random& random) {
    static const QVector<QJsonValue> values = {
        QJsonValue(),
        true,
        -1,
        1e308,
        -1e308,
        4294967296.5,
        1e-320,
        "",
        "text",
        QString(100000, 'x'),
        QString("\x01\x02\t\n\u202e\ufeff"),
        QString(QChar(0)),
        "nan nan nan",
        "1e39 -1e39 0",
        "[ 0, 1, 2000000000, -1 ]",
        "VertexProperty { vertex [ 0 0 0, ] } DEF",
        QJsonArray(),
        QJsonArray{1, "a", QJsonObject()},
        QJsonArray{QJsonArray{QJsonArray{1e308, 1, 2}}},
        QJsonObject(),
        QJsonObject{{"id", -7}, {"G54", 3}},
    };
    return values[static_cast<int>(random() % static_cast<unsigned>(values.size()))];
}

/// One value anywhere in the document becomes another one.
QJsonValue spoiled(const QJsonValue& value, Random& random) {
    if (random() % 6 == 0)
        return strangeValue(random);
    if (value.isObject() && !value.toObject().isEmpty()) {
        QJsonObject object = value.toObject();
        const QStringList keys = object.keys();
        const QString& key = keys[static_cast<int>(random() % static_cast<unsigned>(keys.size()))];
        object[key] = spoiled(object[key], random);
        return object;
    }
    if (value.isArray() && !value.toArray().isEmpty()) {
        QJsonArray array = value.toArray();
        const int index = static_cast<int>(random() % static_cast<unsigned>(array.size()));
        array[index] = spoiled(array.at(index), random);
        return array;
    }
    return strangeValue(random);
}

void expectStillUsable(DocumentBench& bench, const QStringList& programs) {
    EXPECT_EQ(bench.saveAs("after.tornvale"), QStringList("The file was saved."));
    EXPECT_EQ(bench.load(DocumentBench::golden("current.tornvale")), QStringList());
    EXPECT_EQ(bench.programs(), programs);
}

QByteArray goldenWith(const QByteArray& text, const QByteArray& by) {
    QByteArray document = DocumentBench::golden("current.tornvale");
    EXPECT_TRUE(document.contains(text)) << text.toStdString();
    return document.replace(text, by);
}

struct Bench : DocumentBench {
    Bench() {
        open();
        load(golden("current.tornvale"));
        good = programs();
    }
    QStringList good;
};

}  // namespace

TEST(HostileDocument, ValuesOfTheWrongKindAnywhere) {
    Bench bench;
    for (const char* form : {"current.tornvale", "middle.tornvale", "old.tornvale"}) {
        const QJsonObject whole = QJsonDocument::fromJson(DocumentBench::golden(form)).object();
        for (unsigned seed = 1; seed <= 100; ++seed) {
            SCOPED_TRACE(testing::Message() << form << " seed " << seed);
            Random random(seed);
            QJsonValue document = whole;
            for (unsigned i = 0; i <= seed % 4; ++i)
                document = spoiled(document, random);
            bench.load(QJsonDocument(document.toObject()).toJson());
            // What can be shown can be saved and opened again, and is then the same.
            const QStringList shown = bench.programs();
            EXPECT_EQ(bench.saveAs("spoiled.tornvale"), QStringList("The file was saved."));
            bench.load(bench.bytes("spoiled.tornvale"));
            EXPECT_EQ(bench.programs(), shown);
            if (HasFailure())
                return;
        }
    }
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, DeepNestingIsNoDocument) {
    Bench bench;
    for (const char* open : {"[", "{\"a\":"}) {
        const QByteArray deep = QByteArray("{\"ProgramsTreeWidget\":") + QByteArray(open).repeated(200000);
        EXPECT_EQ(bench.load(deep).size(), 1);
    }
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, ManyBlocksThatAreNoItemsAreToldOnce) {
    Bench bench;
    QByteArray blocks = "\"G54\": [";
    for (int i = 0; i < 20000; ++i)
        blocks += "{\"itemName\":\"lathe" + QByteArray::number(i) + "\"},";
    const QStringList told = bench.load(goldenWith("\"G54\": [", blocks));
    ASSERT_EQ(told.size(), 1) << "one box, not one for each";
    EXPECT_TRUE(told[0].contains("lathe0\n")) << told[0].toStdString();
    EXPECT_TRUE(told[0].endsWith("\n... (20000)")) << told[0].toStdString();
    EXPECT_LT(told[0].size(), 2000);
    EXPECT_EQ(bench.programs().size(), bench.good.size());
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, TenThousandUserSystems) {
    Bench bench;
    QJsonObject systems;
    for (int i = 0; i < 10000; ++i)
        systems[QStringLiteral("UCS%1").arg(i)] =
            QJsonObject{{"id", i}, {"name", QStringLiteral("UCS%1").arg(i)}, {"moveTranslation", "1 2 3"}};
    QJsonObject root = QJsonDocument::fromJson(DocumentBench::golden("current.tornvale")).object();
    QJsonObject machine = root["machineNode"].toObject();
    machine["G54"] = systems;
    root["machineNode"] = machine;
    EXPECT_EQ(bench.load(QJsonDocument(root).toJson()), QStringList());
    EXPECT_EQ(bench.window().machine().findWorkCoordinateSystem("G54")->ucsList().size(), 10000);
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, ASystemNamedLikeAnAxisIsNone) {
    Bench bench;
    for (const char* axis : {"X", "Bed"}) {
        const auto objects = [&bench, axis] { return bench.window().machine().collisionGroups()[axis]; };
        bench.load(DocumentBench::golden("current.tornvale"));
        const auto before = objects();
        ASSERT_FALSE(before.isEmpty()) << axis;
        bench.load(goldenWith("\"UCS1\"", '"' + QByteArray(axis) + '"'));
        QStringList systems;
        for (const userCoordinateSystem* system :
             bench.window().machine().findWorkCoordinateSystem("G54")->ucsList())
            systems << system->name();
        EXPECT_TRUE(systems.contains(axis)) << systems.join(' ').toStdString();
        EXPECT_EQ(objects(), before) << axis;
    }
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, ASystemTakesANumberWhoseNameIsFreeToo) {
    Bench bench;
    // The system without a number would be UCS1.
    QByteArray document = goldenWith("\"id\": 0,\n    \"name\": \"UCS0\"", "\"id\": 7, \"name\": \"UCS1\"");
    document.replace("\"id\": 1,\n    \"name\": \"UCS1\"", "\"id\": -1, \"name\": \"free\"");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(bench.load(document), QStringList());
        QStringList names;
        for (const userCoordinateSystem* system :
             bench.window().machine().findWorkCoordinateSystem("G54")->ucsList())
            names << QString::number(system->id()) << system->name();
        EXPECT_EQ(names, QStringList({"7", "UCS1", "2", "UCS2"})) << "loaded " << i + 1;
        bench.saveAs("again.tornvale");
        document = bench.bytes("again.tornvale");
    }
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, TenThousandSystemsOfOneNumber) {
    Bench bench;
    QJsonObject systems;
    for (int i = 0; i < 10000; ++i)
        systems[QStringLiteral("a%1").arg(i)] = QJsonObject{{"id", 1}, {"name", "UCS1"}};
    QJsonObject root = QJsonDocument::fromJson(DocumentBench::golden("current.tornvale")).object();
    QJsonObject machine = root["machineNode"].toObject();
    machine["G54"] = systems;
    root["machineNode"] = machine;
    bench.load(QJsonDocument(root).toJson());
    QSet<int> numbers;
    for (const userCoordinateSystem* system :
         bench.window().machine().findWorkCoordinateSystem("G54")->ucsList())
        numbers.insert(system->id());
    EXPECT_EQ(numbers.size(), 10000) << "every one has a number of its own";
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, HugeTexts) {
    Bench bench;
    const QByteArray huge(5000000, 'G');
    bench.load(goldenWith("\"Kitchen\"", '"' + huge + '"'));
    bench.load(goldenWith("\"Square.nc\"", '"' + huge + '"'));
    bench.load(goldenWith("\"a square\"", '"' + huge + '"'));
    bench.load(goldenWith("G1 Z100 F3000", huge));
    bench.load(goldenWith("\"[ 0, 2, 1, -1, 0, 1, 3, -1, 1, 2, 3, -1, 0, 3, 2, -1 ]\"",
                          "\"[ " + QByteArray("0, ").repeated(1000000) + "-1 ]\""));
    expectStillUsable(bench, bench.good);
}

// The scene library writes past its memory on names of 64 KB.
TEST(HostileDocument, LongNames) {
    Bench bench;
    const QByteArray name = '"' + QByteArray(300000, 'n') + '"';
    for (const char* key : {"\"UCS1\"", "\"userModel0\"", "\"userCodeItem0\"", "\"G55\"", "\"X->Z->C->A\""}) {
        SCOPED_TRACE(key);
        bench.load(goldenWith(key, name));
        const QStringList shown = bench.programs();
        EXPECT_EQ(bench.saveAs("named.tornvale"), QStringList("The file was saved."));
        bench.load(bench.bytes("named.tornvale"));
        EXPECT_EQ(bench.programs(), shown);
    }
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, LongWordsInFieldTexts) {
    Bench bench;
    const QByteArray word(300000, 'n');
    const QByteArray digits(300000, '1');
    const QByteArray vertices = "\"VertexProperty { vertex [ 0 0 0, 100 0 0, 0 100 0, 0 0 50 ] }\"";
    for (const QByteArray& text :
         {word, digits, "DEF " + word + " VertexProperty { vertex [ 0 0 0 ] }",
          word + " VertexProperty { vertex [ 0 0 0 ] }", "VertexProperty { " + word + " [ 0 0 0 ] }",
          "VertexProperty { materialBinding " + word + " }",
          "VertexProperty { vertex [ 0 0 " + digits + " ] }",
          "DEF " + QByteArray("a,").repeated(150000) + " VertexProperty { }"}) {
        SCOPED_TRACE(text.left(40).toStdString());
        for (const QByteArray& key :
             {vertices, QByteArray("\"10 20 30\""), QByteArray("\"0.81 0.81 0.81\""), QByteArray("\"-3\"")})
            EXPECT_EQ(bench.load(goldenWith(key, '"' + text + '"')), QStringList());
    }
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, AListWithoutBlanksIsRead) {
    Bench bench;
    QByteArray indices = "[0,2,1,-1";
    for (int i = 0; i < 1000; ++i)
        indices += ",0,1,3,-1";
    bench.load(
        goldenWith("\"[ 0, 2, 1, -1, 0, 1, 3, -1, 1, 2, 3, -1, 0, 3, 2, -1 ]\"", '"' + indices + "]\""));
    const auto& systems = bench.window().machine().findWorkCoordinateSystem("G54")->ucsList();
    ASSERT_EQ(systems[0]->userModels().size(), 1);
    const QString text = systems[0]->userModels()[0]->toJson()["coordIndex"].toString();
    EXPECT_EQ(text.count("-1"), 1001);
}

// Placing such an item would end the process.
TEST(HostileDocument, AToolOfAnotherMachinesChainCostsItsItemsOnly) {
    Bench bench;
    EXPECT_EQ(bench.load(goldenWith("\"X->Z->C->A\"", "\"no such chain\"")), QStringList());
    const QStringList shown = bench.programs();
    ASSERT_EQ(shown.size(), bench.good.size());
    EXPECT_EQ(shown[2], "") << "the item's chain";
    EXPECT_EQ(shown[3], "unchecked");
    EXPECT_EQ(shown[8], "") << "its code";
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, NumbersOutOfRange) {
    Bench bench;
    for (const char* number :
         {"1e308", "-1e308", "1e30", "2147483648", "-2147483649", "9007199254740993", "0.1"}) {
        for (const char* key :
             {"\"userCoordinateSystemId\": 1", "\"mirrorAngle\": 0", "\"axisShift\": 0",
              "\"translationX\": 5", "\"itemRPM\": 16000", "\"t\": 0.8", "\"type\": 1001", "\"Length\": 150",
              "\"Index\": 0", "\"SpindleNo\": 1", "\"ToolNo\": 1", "\"Type\": 0", "\"id\": 1"}) {
            SCOPED_TRACE(testing::Message() << key << " as " << number);
            const QByteArray name = QByteArray(key).left(QByteArray(key).indexOf(':') + 1);
            bench.load(goldenWith(key, name + number));
        }
    }
    for (const char* code : {"G1 X999999999999 F3000", "G1 X1e308 F3000", "G1 X-.-.- F0", "G3 X1e9 R1",
                             "G16 U V\\n(UPR,1,XYZ,1e308,nan,inf)\\nG1 U1e300"}) {
        SCOPED_TRACE(code);
        bench.load(goldenWith("G1 Z100 F3000", code));
    }
    expectStillUsable(bench, bench.good);
}

TEST(HostileDocument, NamesWithControlCharacters) {
    Bench bench;
    for (const char* name : {"\\u0000", "a\\u0000b", "\\u0001\\u001b[31m", "\\ud800", "\\u202e", "../../etc",
                             "", "UCS1 { DEF x", "<b>bold</b>"}) {
        for (const char* key : {"\"UCS1\"", "\"userModel0\"", "\"userCodeItem0\"", "\"G55\"", "\"T1\"",
                                "\"X->Z->C->A\"", "\"X->Z->C->A;Y\"", "\"-3\""}) {
            SCOPED_TRACE(testing::Message() << key << " as " << name);
            bench.load(goldenWith(key, '"' + QByteArray(name) + '"'));
            EXPECT_EQ(bench.saveAs("named.tornvale"), QStringList("The file was saved."));
            const QStringList shown = bench.programs();
            bench.load(bench.bytes("named.tornvale"));
            EXPECT_EQ(bench.programs(), shown);
        }
    }
    expectStillUsable(bench, bench.good);
}
