#include "BoxMachine.h"

#include <QFile>

#include "geometry/GeometryTestSupport.h"

namespace {

QByteArray axis(const char* name, const char* direction, const char* place) {
    const QByteArray letter(name);
    return "<axis><name>" + letter + "</name><nickName>" + letter +
           "</nickName><homePosition>0</homePosition><maxVelocity>60000</maxVelocity>"
           "<lower>-1000</lower><upper>1000</upper><jerk>50000</jerk><acceleration>2000</acceleration>"
           "<color>0.8 0.8 0.8</color><initialization>" +
           QByteArray(place) + "</initialization><direction>" + QByteArray(direction) +
           "</direction><type>LINEAR</type><modelPath>models/Box.stl</modelPath><id/></axis>";
}

QByteArray part(const char* name, const char* place) {
    return "<part><name>" + QByteArray(name) + "</name><parent/><color>0.2 0.3 0.8</color><initialization>" +
           QByteArray(place) +
           "</initialization><type>FIXED</type><modelPath>models/Box.stl</modelPath>"
           "<direction>0 0 1</direction><lower>0</lower><upper>0</upper></part>";
}

QByteArray boxMachineXml() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><root><machineParameters><kinematicChain>"
           "<chain>X-&gt;Z;Y</chain></kinematicChain></machineParameters><numericalAxis>" +
           axis("X", "1 0 0", "0 0 -500") + axis("Y", "0 1 0", "0 0 0") + axis("Z", "0 0 1", "0 0 100") +
           "</numericalAxis><nonNumericalAxis>" + part("Bed", "300 0 0") + part("Lamp", "600 0 0") +
           "</nonNumericalAxis><spindle><s><name>T1</name><initialization>0 0 0 0</initialization>"
           "<startString>M3 S#</startString><stopString>M5</stopString>"
           "<toolChangeString>M6 T#</toolChangeString><range>4</range><coaxial/><parent>X-&gt;Z</parent>"
           "<color>0.5 0.5 0.5</color><direction>0 0 -1</direction></s></spindle>"
           "<interpolationParameters><interpolationTime>2</interpolationTime>"
           "<rapidThreshold>30000</rapidThreshold></interpolationParameters>"
           "<userCoordinateSystem><w><name>G54</name><nickName>table</nickName><parent>Y</parent>"
           "<initialization>0 0 0</initialization><kinematicChain><c>X-&gt;Z;Y</c></kinematicChain></w>"
           "</userCoordinateSystem><userCommand/><collisionObjectList><pair key=\"Bed\" value=\"true\"/>"
           "<pair key=\"Lamp\" value=\"false\"/></collisionObjectList><userFixtureList/></root>";
}

}  // namespace

void BoxMachine::SetUp() {
    Batch::SetUp();
    write("data/machineSample/m.xml", boxMachineXml());
    write("data/models/Box.stl", binaryStl(boxTriangles(SbVec3f(10, 10, 10))));
    QFile names(shippedInstallation() + "/data/UniquelyIdentifies.json");
    ASSERT_TRUE(names.open(QIODevice::ReadOnly));
    write("data/data/UniquelyIdentifies.json", names.readAll());
    write("data/toollib.json",
          R"({"version":"1.0.0.0","tool0":{"Index":0,"SpindleNo":1,"ToolNo":1,"Length":100,"Diameter":10,)"
          R"("InstallationName":"X->Z","SpName":"T1","Transform":[0,0,0,0,0,0],)"
          R"("ContourPoints":[[0,0,0],[5,0,0],[5,0,-100],[0,0,-100],[0,0,0]]}})");
}
