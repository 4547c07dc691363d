#include <gtest/gtest.h>

#include <QApplication>

// Under sanitizers a plugin that was unloaded before the report has lost its name, and a leak inside it can
// no longer be told from one of ours: nothing is unloaded.
#if defined(__SANITIZE_ADDRESS__)
extern "C" int dlclose(void* /*handle*/) {
    return 0;
}
#endif

// The list of tests must not need a display: it is read before any application object exists.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
