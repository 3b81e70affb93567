// The link properties dialog: its controls, their texts and places, and the write-back on OK.
#include "ZvLinkProp.h"

#include "ZvErrors.h"
#include "ZvFloatTable.h"
#include "ZvJoinDefs.h"
#include "ZvLinks.h"
#include "ZvMessages.h"
#include "ZvResource.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>

#include <algorithm>

namespace zv {

TZvLink* CurrentLnk = nullptr;

std::function<int(TfmLinkProp&)> TfmLinkProp::ExecDialog = [](TfmLinkProp& Dialog) { return Dialog.exec(); };

namespace {

constexpr int Margin = 8;
constexpr int CaptionTop = 8;
constexpr int FieldsTop = 36;
constexpr int ChecksTop = 68;
constexpr int ButtonsTop = 98;
constexpr int RowHeight = 22;
// Gaps from the middle of the form: the check boxes 4 pixels to either side, the buttons 20.
constexpr int CheckGap = 4;
constexpr int ButtonGap = 20;

template <class TWidget>
TWidget* Named(TWidget* Widget, const char* Name) {
    Widget->setObjectName(QString::fromLatin1(Name));
    return Widget;
}

QString TableCaption(const TZvTable& Table) {
    return QString::fromStdString(Table.GetCaption());
}

} // namespace

TfmLinkProp::TfmLinkProp(QWidget* Parent)
    : QDialog(Parent, Qt::Tool), laCaption(Named(new QLabel(this), "laCaption")),
      laLeftField(Named(new QLabel(this), "laLeftField")),
      cbConditions(Named(new QComboBox(this), "cbConditions")),
      laRightField(Named(new QLabel(this), "laRightField")),
      chLeftOuter(Named(new QCheckBox(this), "chLeftOuter")),
      chRightOuter(Named(new QCheckBox(this), "chRightOuter")),
      buOK(Named(new QPushButton(ZvText(TZvRes::ButtonOK), this), "buOK")),
      buCancel(Named(new QPushButton(ZvText(TZvRes::ButtonCancel), this), "buCancel")),
      CompareOperators({QStringLiteral("="), QStringLiteral(">"), QStringLiteral("<"), QStringLiteral(">="),
                        QStringLiteral("<="), QStringLiteral("<>")}) {
    setObjectName(QStringLiteral("fmLinkProp"));
    setWindowTitle(ZvText(TZvRes::LinkPropCaption));
    laCaption->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    laLeftField->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    laRightField->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    buOK->setDefault(true);
    connect(buOK, &QPushButton::clicked, this, [this] { ZvRunGuarded(this, [this] { buOKClick(); }); });
    connect(buCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(chLeftOuter, &QCheckBox::clicked, this, [this] { chLeftOuterClick(); });
    connect(chRightOuter, &QCheckBox::clicked, this, [this] { chRightOuterClick(); });
    setFixedHeight(FormHeight);
    resize(CalcMinWidth(), FormHeight);
}

void TfmLinkProp::SetCompareOperatorList(const QString& Value) {
    CompareOperators = Value.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString& Operator : CompareOperators)
        Operator = Operator.trimmed();
}

int TfmLinkProp::Execute() {
    FormShow();
    return ExecDialog(*this);
}

// The link's own operator stays a choice even when the dialect's list lacks it (a statement read
// in another dialect), so that opening the dialog never changes it.
void TfmLinkProp::FillConditions(const QString& Current) {
    cbConditions->clear();
    cbConditions->addItems(CompareOperators);
    if (!Current.isEmpty() && cbConditions->findText(Current) < 0)
        cbConditions->addItem(Current);
    cbConditions->setCurrentIndex(cbConditions->findText(Current));
}

void TfmLinkProp::FormShow() {
    if (!CurrentLnk)
        throw EZvError(ZvText(TZvRes::LinkPropInvalidLink).toStdString());
    const TZvJoin& Join = *CurrentLnk->GetJoin();
    const QString And = QLatin1Char(' ') + ZvText(TZvRes::WordAnd) + QLatin1Char(' ');
    laCaption->setText(ZvText(TZvRes::LinkPropJoinTables) + TableCaption(*Join.GetTable1()) + And +
                       TableCaption(*Join.GetTable2()));
    laLeftField->setText(QString::fromStdString(CurrentLnk->GetItem1()->GetName()));
    laRightField->setText(QString::fromStdString(CurrentLnk->GetItem2()->GetName()));
    const QString IncludeAll = ZvText(TZvRes::LinkPropIncludeAllFrom) + QLatin1Char(' ');
    chLeftOuter->setText(IncludeAll + QString::fromStdString(Join.GetTableName(0)));
    chRightOuter->setText(IncludeAll + QString::fromStdString(Join.GetTableName(1)));
    chLeftOuter->setChecked(Join.JoinType == zvjLOuterJoin || Join.JoinType == zvjFOuterJoin);
    chRightOuter->setChecked(Join.JoinType == zvjROuterJoin || Join.JoinType == zvjFOuterJoin);
    FillConditions(QString::fromStdString(CurrentLnk->GetOperator()));
    CalcMinWidth();
    if (MinWidth > width())
        resize(MinWidth, height());
    FormResize();
}

void TfmLinkProp::buOKClick() {
    if (!CurrentLnk)
        throw EZvError(ZvText(TZvRes::LinkPropInvalidLink).toStdString());
    const bool Left = chLeftOuter->isChecked();
    const bool Right = chRightOuter->isChecked();
    const int JoinType = Left && Right ? zvjFOuterJoin
                         : Left        ? zvjLOuterJoin
                         : Right       ? zvjROuterJoin
                                       : zvjInnerJoin;
    CurrentLnk->GetWorkArea()->ApplyLinkProperties(*CurrentLnk, JoinType,
                                                   cbConditions->currentText().toStdString());
    accept();
}

void TfmLinkProp::chLeftOuterClick() {
    if (!FullOuterJoinSupported && chLeftOuter->isChecked() && chRightOuter->isChecked())
        chRightOuter->setChecked(false);
}

void TfmLinkProp::chRightOuterClick() {
    if (!FullOuterJoinSupported && chLeftOuter->isChecked() && chRightOuter->isChecked())
        chLeftOuter->setChecked(false);
}

// The form must show both check boxes side by side about its middle, and the two buttons.
int TfmLinkProp::CalcMinWidth() {
    int Widest = 0;
    for (QCheckBox* Box : {chLeftOuter, chRightOuter}) {
        const int Needed = QFontMetrics(Box->font()).horizontalAdvance(Box->text()) + 20;
        Box->resize(Needed, RowHeight);
        Widest = std::max(Widest, Needed);
    }
    MinWidth = 2 * (std::max(Widest + CheckGap, ButtonWidth + ButtonGap) + Margin);
    setMinimumWidth(MinWidth);
    return MinWidth;
}

void TfmLinkProp::FormResize() {
    const int Width = width();
    const int Middle = Width / 2;
    laCaption->setGeometry(Margin, CaptionTop, Width - 2 * Margin, RowHeight);
    const QRect Combo(Middle - ComboWidth / 2, FieldsTop, ComboWidth, RowHeight);
    cbConditions->setGeometry(Combo);
    laLeftField->setGeometry(Margin, FieldsTop, std::max(0, Combo.left() - 1 - Margin), RowHeight);
    const int RightStart = Combo.left() + Combo.width() + 1;
    laRightField->setGeometry(RightStart, FieldsTop, std::max(0, Width - Margin - RightStart), RowHeight);
    chLeftOuter->move(Middle - CheckGap - chLeftOuter->width(), ChecksTop);
    chRightOuter->move(Middle + CheckGap, ChecksTop);
    buOK->setGeometry(Middle - ButtonGap - ButtonWidth, ButtonsTop, ButtonWidth, 26);
    buCancel->setGeometry(Middle + ButtonGap, ButtonsTop, ButtonWidth, 26);
}

bool TfmLinkProp::FormCanResize(int NewWidth, int NewHeight) const {
    return NewHeight == height() && NewWidth >= MinWidth;
}

void TfmLinkProp::resizeEvent(QResizeEvent* Event) {
    QDialog::resizeEvent(Event);
    FormResize();
}

} // namespace zv
