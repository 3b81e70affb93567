// The designer's command line: which database to open, the dialect, a statement to load, and the
// screenshot mode that renders the window to a picture without a display.
#pragma once

#include "ZvConnection.h"

#include <QString>
#include <QStringList>

namespace zv {

struct TZvDesignerOptions {
    TZvConnectionInfo Connection; // the sample database unless --db or --driver names another
    QString Dialect = QStringLiteral("generic");
    QString StatementFile; // --sql: a statement loaded at start (the sample statement otherwise)
    QString Screenshot;    // --screenshot: write the window to this PNG file and exit
    bool Help = false;
};

// Thrown for a command line that cannot be run; the message says what is wrong.
struct TZvDesignerUsageError {
    QString Message;
};

// Reads the arguments after the program name. Raises TZvDesignerUsageError.
TZvDesignerOptions ParseDesignerArguments(const QStringList& Arguments);
// The text printed by --help.
QString DesignerUsage();

} // namespace zv
