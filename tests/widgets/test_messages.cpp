// The confirmation and error display hooks: the default message boxes, replacement and
// restoration of the handlers, "any answer but No" consent, and guarded user actions.
#include "ZvMessages.h"
#include "ZvResource.h"
#include "ZvTestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <stdexcept>

namespace zv {
namespace {

using test::TZvMessageRecorder;

TEST(ZvMessages, RecorderReceivesTheQuestionAndAnswersIt) {
    TZvMessageRecorder Recorder(QMessageBox::No);
    EXPECT_EQ(ZvAskYesNo(nullptr, QStringLiteral("Attention!"), QStringLiteral("Delete?")), QMessageBox::No);
    ASSERT_EQ(Recorder.Questions.size(), 1u);
    EXPECT_EQ(Recorder.Questions[0].Caption, QStringLiteral("Attention!"));
    EXPECT_EQ(Recorder.Questions[0].Text, QStringLiteral("Delete?"));
}

TEST(ZvMessages, ConsentIsAnyAnswerButNo) {
    TZvMessageRecorder Recorder;
    for (const auto Answer :
         {QMessageBox::Yes, QMessageBox::Cancel, QMessageBox::NoButton, QMessageBox::Close}) {
        Recorder.SetAnswer(Answer);
        EXPECT_TRUE(ZvConfirm(nullptr, QStringLiteral("Confirmation"), QStringLiteral("?"))) << Answer;
    }
    Recorder.SetAnswer(QMessageBox::No);
    EXPECT_FALSE(ZvConfirm(nullptr, QStringLiteral("Confirmation"), QStringLiteral("?")));
    EXPECT_EQ(Recorder.Questions.size(), 5u);
}

TEST(ZvMessages, RecorderCollectsErrorsWithTheirParent) {
    TZvMessageRecorder Recorder;
    QWidget Parent;
    ZvShowError(&Parent, QStringLiteral("Can't delete last row!"));
    ASSERT_EQ(Recorder.Errors.size(), 1u);
    EXPECT_EQ(Recorder.Errors[0].Parent, &Parent);
    EXPECT_EQ(Recorder.Errors[0].Message, QStringLiteral("Can't delete last row!"));
}

TEST(ZvMessages, SettingAHandlerReturnsThePreviousOneAndRecordersNest) {
    TZvMessageRecorder Outer;
    {
        TZvMessageRecorder Inner(QMessageBox::No);
        EXPECT_FALSE(ZvConfirm(nullptr, QString(), QStringLiteral("inner")));
        EXPECT_EQ(Inner.Questions.size(), 1u);
    }
    EXPECT_TRUE(ZvConfirm(nullptr, QString(), QStringLiteral("outer")));
    ASSERT_EQ(Outer.Questions.size(), 1u);
    EXPECT_EQ(Outer.Questions[0].Text, QStringLiteral("outer"));

    int Calls = 0;
    TZvErrorHandler Previous = SetErrorHandler([&Calls](QWidget*, const QString&) { ++Calls; });
    ZvShowError(nullptr, QStringLiteral("x"));
    TZvErrorHandler Mine = SetErrorHandler(std::move(Previous));
    EXPECT_EQ(Calls, 1);
    ASSERT_TRUE(Mine);
    ZvShowError(nullptr, QStringLiteral("y"));
    EXPECT_EQ(Calls, 1);
    EXPECT_EQ(Outer.Errors.size(), 1u);
}

// Presses the button of the message box that is about to run modally, once it shows.
void PressWhenShown(QMessageBox::StandardButton Button, QString* SeenText, QString* SeenTitle,
                    QMessageBox::Icon* SeenIcon) {
    QTimer::singleShot(0, [=] {
        auto* Box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!Box) {
            PressWhenShown(Button, SeenText, SeenTitle, SeenIcon);
            return;
        }
        *SeenText = Box->text();
        *SeenTitle = Box->windowTitle();
        *SeenIcon = Box->icon();
        if (QAbstractButton* Target = Box->button(Button)) {
            Target->click();
        } else {
            Box->reject();
        }
    });
}

TEST(ZvMessages, WithoutHandlerTheQuestionIsAYesNoBoxWithTheQuestionIcon) {
    TZvConfirmHandler Saved = SetConfirmHandler({});
    QString Text, Title;
    QMessageBox::Icon Icon = QMessageBox::NoIcon;
    PressWhenShown(QMessageBox::No, &Text, &Title, &Icon);
    const auto Answer = ZvAskYesNo(nullptr, QStringLiteral("Attention!"), QStringLiteral("Remove it?"));
    SetConfirmHandler(std::move(Saved));
    EXPECT_EQ(Answer, QMessageBox::No);
    EXPECT_EQ(Text, QStringLiteral("Remove it?"));
    EXPECT_EQ(Title, QStringLiteral("Attention!"));
    EXPECT_EQ(Icon, QMessageBox::Question);
}

TEST(ZvMessages, WithoutHandlerTheErrorIsACriticalBox) {
    TZvErrorHandler Saved = SetErrorHandler({});
    QString Text, Title;
    QMessageBox::Icon Icon = QMessageBox::NoIcon;
    PressWhenShown(QMessageBox::Ok, &Text, &Title, &Icon);
    ZvShowError(nullptr, QStringLiteral("Invalid link"));
    SetErrorHandler(std::move(Saved));
    EXPECT_EQ(Text, QStringLiteral("Invalid link"));
    EXPECT_EQ(Icon, QMessageBox::Critical);
}

TEST(ZvMessages, GuardedActionShowsItsExceptionAndReportsFailure) {
    TZvMessageRecorder Recorder;
    bool Ran = false;
    EXPECT_FALSE(ZvRunGuarded(nullptr, [&Ran] {
        Ran = true;
        throw std::runtime_error("Table with alias EMP already exists");
    }));
    EXPECT_TRUE(Ran);
    ASSERT_EQ(Recorder.Errors.size(), 1u);
    EXPECT_EQ(Recorder.Errors[0].Message, QStringLiteral("Table with alias EMP already exists"));
}

TEST(ZvMessages, GuardedActionThatSucceedsShowsNothing) {
    TZvMessageRecorder Recorder;
    int Value = 0;
    EXPECT_TRUE(ZvRunGuarded(nullptr, [&Value] { Value = 42; }));
    EXPECT_EQ(Value, 42);
    EXPECT_TRUE(Recorder.Errors.empty());
}

TEST(ZvMessages, ExceptionWithoutMessageIsShownAsUnknownError) {
    TZvMessageRecorder Recorder;
    EXPECT_FALSE(ZvRunGuarded(nullptr, [] { throw 7; }));
    ASSERT_EQ(Recorder.Errors.size(), 1u);
    EXPECT_EQ(Recorder.Errors[0].Message, ZvText(TZvRes::UnknownError));
}

} // namespace
} // namespace zv
