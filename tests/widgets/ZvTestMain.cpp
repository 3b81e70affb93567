// The main of every widget test binary: one QApplication on the offscreen platform with the Fusion
// style and its standard palette, so that pixels do not depend on the desktop, and guards that turn
// any message box into a test failure.
#include "ZvTestServers.h"
#include "ZvTestSupport.h"

#include <QApplication>
#include <QDir>
#include <QStyle>
#include <QStyleFactory>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Qt wants a private runtime directory; without one it warns on every start.
void EnsureRuntimeDirectory() {
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        return;
    }
    const QString Path = QDir::tempPath() + QStringLiteral("/zevrin-runtime-%1").arg(getuid());
    QDir().mkpath(Path);
    ::chmod(QFile::encodeName(Path).constData(), S_IRWXU);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(Path));
}

// Stops the shared servers that tests started before the process ends.
class TServersEnvironment : public ::testing::Environment {
public:
    void TearDown() override { zv::test::StopSharedServers(); }
};

} // namespace

int main(int argc, char** argv) {
    // Also reached when CTest lists the tests, which is why the platform is chosen here too.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    EnsureRuntimeDirectory();
    ::testing::InitGoogleTest(&argc, argv);
    QApplication Application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    zv::test::InstallUnexpectedMessageGuards();
    ::testing::AddGlobalTestEnvironment(new TServersEnvironment);
    return RUN_ALL_TESTS();
}
