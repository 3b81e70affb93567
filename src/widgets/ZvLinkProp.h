// The link properties dialog: the comparison operator of one link and the outer-join flags of the
// join it belongs to. OK writes both back to the diagram and to the query model; the kind of join
// goes to every join between the same two tables, since they form one ON clause.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace zv {

class TZvLink;

// The link the dialog shows; set by the link before the dialog is shown, cleared afterwards.
extern TZvLink* CurrentLnk;

class TfmLinkProp : public QDialog {
    Q_OBJECT
public:
    // The height is fixed; the width can grow, never below what the check boxes need.
    static constexpr int FormHeight = 132;
    static constexpr int ComboWidth = 64;
    static constexpr int ButtonWidth = 75;

    explicit TfmLinkProp(QWidget* Parent = nullptr);

    // The operator choices as comma text ("=,>,<,>=,<=,<>" until set).
    QString GetCompareOperatorList() const { return CompareOperators.join(QLatin1Char(',')); }
    void SetCompareOperatorList(const QString& Value);
    bool GetFullOuterJoinSupported() const { return FullOuterJoinSupported; }
    void SetFullOuterJoinSupported(bool Value) { FullOuterJoinSupported = Value; }

    // FormShow, then the modal run (ExecDialog); the dialog's result.
    int Execute();
    // Fills the controls from CurrentLnk and sizes the form; raises EZvError "Invalid link" without
    // a current link.
    void FormShow();
    // Stores the kind of join and the operator in the diagram and the model, and closes with OK.
    void buOKClick();
    // Without full outer joins, checking one box unchecks the other.
    void chLeftOuterClick();
    void chRightOuterClick();
    // Sizes the check boxes to their captions; the smallest width that shows both.
    int CalcMinWidth();
    int GetMinWidth() const { return MinWidth; }
    // Keeps the controls centred on the middle of the form.
    void FormResize();
    // True when the form may take this size: the same height, and not narrower than the minimum.
    bool FormCanResize(int NewWidth, int NewHeight) const;

    QLabel* laCaption;
    QLabel* laLeftField;
    QComboBox* cbConditions;
    QLabel* laRightField;
    QCheckBox* chLeftOuter;
    QCheckBox* chRightOuter;
    QPushButton* buOK;
    QPushButton* buCancel;

    // Runs the dialog modally; replaceable so that tests can work the controls instead of a user.
    static std::function<int(TfmLinkProp& Dialog)> ExecDialog;

protected:
    void resizeEvent(QResizeEvent* Event) override;

private:
    void FillConditions(const QString& Current);

    QStringList CompareOperators;
    bool FullOuterJoinSupported = true;
    int MinWidth = 0;
};

} // namespace zv
