// zevrin-designer: the process around the designer window. Reads the command line, opens the
// database, shows the window, or in screenshot mode renders it to a PNG file and exits.
#include "ZvConnection.h"
#include "ZvDesignerOptions.h"
#include "ZvDesignerWindow.h"
#include "ZvScreenshot.h"
#include "ZvSqlPane.h"

#include <QApplication>

#include <cstdio>

namespace {

constexpr int kPreviewWaitMs = 30000;

QtMessageHandler DefaultMessageHandler = nullptr;

// The offscreen platform warns on every shown window that it has no window manager to pass size
// hints to; in screenshot mode that is expected and only noise.
void QuietOffscreenHandler(QtMsgType Type, const QMessageLogContext& Context, const QString& Message) {
    if (Message.contains(QLatin1String("propagateSizeHints")))
        return;
    if (DefaultMessageHandler != nullptr)
        DefaultMessageHandler(Type, Context, Message);
    else
        std::fprintf(stderr, "%s\n", qPrintable(Message));
}

bool HasDisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

void Print(std::FILE* Stream, const QString& Text) {
    std::fputs(Text.toLocal8Bit().constData(), Stream);
}

int Fail(const QString& Message, int Code) {
    Print(stderr, QStringLiteral("zevrin-designer: %1\n").arg(Message));
    return Code;
}

int ShowWindow(zv::TZvDesignerWindow& Window) {
    Window.show();
    return QApplication::exec();
}

// The window as a user would first see it: shown, laid out, and with the preview's rows in.
int WriteScreenshot(zv::TZvDesignerWindow& Window, const QString& File) {
    Window.show();
    Window.WaitForPreview(kPreviewWaitMs);
    QApplication::processEvents();
    QString Error;
    return zv::ZvWriteScreenshot(Window, File, &Error) ? 0 : Fail(Error, 1);
}

} // namespace

int main(int argc, char** argv) {
    // The command line is read before the application object exists, so that --help and usage
    // errors work without a display and the screenshot mode can choose its platform.
    QStringList Arguments;
    for (int I = 1; I < argc; ++I)
        Arguments << QString::fromLocal8Bit(argv[I]);
    zv::TZvDesignerOptions Options;
    try {
        Options = zv::ParseDesignerArguments(Arguments);
    } catch (const zv::TZvDesignerUsageError& Error) {
        return Fail(Error.Message + QStringLiteral(" (see --help)"), 2);
    }
    if (Options.Help) {
        Print(stdout, zv::DesignerUsage());
        return 0;
    }
    if (!Options.Screenshot.isEmpty() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        DefaultMessageHandler = qInstallMessageHandler(QuietOffscreenHandler);
    }
#ifdef Q_OS_LINUX
    // Qt would abort on a missing display with a message about plugins; say what to do instead.
    if (!HasDisplay())
        return Fail(QStringLiteral("no display (DISPLAY and WAYLAND_DISPLAY are unset); "
                                   "--screenshot FILE renders the window to a PNG file without one"),
                    1);
#endif
    QApplication Application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zevrin-designer"));

    QString Error;
    QSqlDatabase Database =
        zv::ZvOpenConnection(Options.Connection, QStringLiteral("zevrin-designer"), &Error);
    if (!Database.isOpen())
        return Fail(Error, 1);
    int Code = 0;
    {
        zv::TZvDesignerWindow Window(Database, Options.Connection);
        Window.SqlPane()->SetDialect(Options.Dialect);
        if (!Options.StatementFile.isEmpty()) {
            if (!Window.LoadStatementFile(Options.StatementFile, &Error))
                Code = Fail(Error, 1);
        } else if (Options.Connection.Sample) {
            Window.LoadStatement(zv::ZvSampleStatement());
        }
        if (Code == 0)
            Code = Options.Screenshot.isEmpty() ? ShowWindow(Window)
                                                : WriteScreenshot(Window, Options.Screenshot);
    }
    Database = QSqlDatabase();
    zv::ZvCloseConnection(QStringLiteral("zevrin-designer"));
    return Code;
}
