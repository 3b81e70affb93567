// The SQL pane: editing, parsing through the core, and error placement.
#include "ZvSqlPane.h"

#include "ZvDialects.h"
#include "ZvEditorPosition.h"
#include "ZvErrors.h"
#include "ZvSelectParser.h"
#include "ZvUtils.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <exception>
#include <string>

namespace zv {
namespace {

struct TDialectCaption {
    const char* Name;
    const char* Caption;
};

// The chooser's captions; the names are the core's (ZvDialects).
constexpr TDialectCaption kCaptions[] = {
    {"generic", QT_TRANSLATE_NOOP("ZvSqlPane", "Generic SQL")},
    {"interbase", QT_TRANSLATE_NOOP("ZvSqlPane", "InterBase/Firebird")},
    {"mysql", QT_TRANSLATE_NOOP("ZvSqlPane", "MySQL")},
    {"dbisam", QT_TRANSLATE_NOOP("ZvSqlPane", "DBISAM")},
    {"mssql", QT_TRANSLATE_NOOP("ZvSqlPane", "Microsoft SQL Server")},
    {"postgresql", QT_TRANSLATE_NOOP("ZvSqlPane", "PostgreSQL")},
    {"db2", QT_TRANSLATE_NOOP("ZvSqlPane", "IBM DB2")},
    {"oracle", QT_TRANSLATE_NOOP("ZvSqlPane", "Oracle")},
};

QString CaptionOf(const std::string& Name) {
    for (const TDialectCaption& Row : kCaptions) {
        if (Name == Row.Name)
            return QCoreApplication::translate("ZvSqlPane", Row.Caption);
    }
    return QString::fromStdString(Name);
}

// The generated statement as the editor holds it: '\n' line breaks and no final one.
QString EditorText(const QString& Generated) {
    QString Text = Generated;
    Text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (Text.endsWith(QLatin1Char('\n')))
        Text.chop(1);
    return Text;
}

} // namespace

TZvSqlPane::TZvSqlPane(QWidget* Parent)
    : QWidget(Parent), Dialects(new QComboBox(this)), TextEdit(new QPlainTextEdit(this)),
      ErrorLabel(new QLabel(this)), Parser(CreateDialectParser("generic")) {
    for (const std::string& Name : DialectNames())
        Dialects->addItem(CaptionOf(Name), QString::fromStdString(Name));
    auto* ApplyButton = new QPushButton(tr("&Apply"), this);
    ApplyButton->setToolTip(tr("Parse the statement and write it in the dialect's layout (Ctrl+Return)"));
    auto* ApplyAction = new QAction(this);
    ApplyAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return));
    ApplyAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(ApplyAction);

    TextEdit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    TextEdit->setLineWrapMode(QPlainTextEdit::NoWrap);
    TextEdit->setPlaceholderText(tr("Type or paste a SELECT statement, then press Ctrl+Return"));
    ErrorLabel->setWordWrap(true);
    ErrorLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ErrorLabel->setStyleSheet(QStringLiteral("color: #b00020"));
    ErrorLabel->hide();

    auto* Bar = new QHBoxLayout;
    auto* DialectLabel = new QLabel(tr("&Dialect:"), this);
    DialectLabel->setBuddy(Dialects);
    Bar->addWidget(DialectLabel);
    Bar->addWidget(Dialects);
    Bar->addStretch();
    Bar->addWidget(ApplyButton);
    auto* Layout = new QVBoxLayout(this);
    Layout->setContentsMargins(0, 0, 0, 0);
    Layout->addLayout(Bar);
    Layout->addWidget(TextEdit, 1);
    Layout->addWidget(ErrorLabel);

    connect(ApplyButton, &QPushButton::clicked, this, &TZvSqlPane::Apply);
    connect(ApplyAction, &QAction::triggered, this, &TZvSqlPane::Apply);
    connect(Dialects, &QComboBox::currentIndexChanged, this, [this] {
        Parser = CreateDialectParser(Dialect().toStdString());
        Apply();
    });
}

TZvSqlPane::~TZvSqlPane() = default;

bool TZvSqlPane::SetDialect(const QString& Name) {
    const int Index = Dialects->findData(Name);
    if (Index < 0)
        return false;
    Dialects->setCurrentIndex(Index);
    return true;
}

QString TZvSqlPane::Dialect() const {
    return Dialects->currentData().toString();
}

bool TZvSqlPane::SetStatement(const QString& Text) {
    TextEdit->setPlainText(Text);
    return Apply();
}

bool TZvSqlPane::Apply() {
    const QString Text = TextEdit->toPlainText();
    Generated.clear();
    if (Text.trimmed().isEmpty()) {
        ShowError({});
        emit StatementCleared();
        return false;
    }
    try {
        Parser->SetExpression(NormalizeInputText(Text.toStdString()));
    } catch (const EZvParserError& Error) {
        const QString Message = QString::fromStdString(Error.what());
        ShowError(Message);
        QTextCursor Cursor = TextEdit->textCursor();
        Cursor.setPosition(ZvEditorPosition(Text, Error.GetLine(), Error.GetPosition()));
        TextEdit->setTextCursor(Cursor);
        TextEdit->ensureCursorVisible();
        TextEdit->setFocus();
        emit StatementFailed(Message);
        return false;
    } catch (const std::exception& Error) {
        // Not a syntax error: nothing to point at, but the message still tells the user.
        const QString Message = QString::fromStdString(Error.what());
        ShowError(Message);
        emit StatementFailed(Message);
        return false;
    }
    Generated = QString::fromStdString(Parser->GetExpression());
    ReplaceEditorText(EditorText(Generated));
    ShowError({});
    emit StatementApplied(Generated);
    return true;
}

QString TZvSqlPane::ErrorText() const {
    return ErrorLabel->text();
}

void TZvSqlPane::ReplaceStatement(const QString& Text) {
    ReplaceEditorText(EditorText(Text));
    Apply();
}

void TZvSqlPane::InsertText(const QString& Text) {
    TextEdit->insertPlainText(Text);
    TextEdit->setFocus();
}

// Replaces the editor's whole text through a cursor, so that Ctrl+Z brings back what was typed.
void TZvSqlPane::ReplaceEditorText(const QString& Text) {
    if (TextEdit->toPlainText() == Text)
        return;
    QTextCursor Cursor(TextEdit->document());
    Cursor.select(QTextCursor::Document);
    Cursor.insertText(Text);
}

void TZvSqlPane::ShowError(const QString& Message) {
    ErrorLabel->setText(Message);
    ErrorLabel->setVisible(!Message.isEmpty());
}

} // namespace zv
