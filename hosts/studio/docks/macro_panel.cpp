// Records, plays, loads and saves a macro, and lists its steps.
// SPDX-License-Identifier: MIT
#include "docks/macro_panel.h"

#include <QAction>
#include <QFileDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "icons.h"
#include "value_text.h"

namespace studio {
namespace {

QAction* make_action(QObject* parent, Icon which, const QString& text, const QKeySequence& keys = {}) {
    auto* action = new QAction(icon(which), text, parent);
    action->setShortcut(keys);
    return action;
}

/// A step that puts a setting; a macro starts with all of them.
bool is_setting(const pixvane_macro_step& step) {
    if (step.member == nullptr) return false;
    const Member* member = find_member(QString::fromUtf8(step.member));
    return member != nullptr && member->type == PIXVANE_PROPERTY;
}

QString arguments_of(const pixvane_macro_step& step) {
    QStringList texts;
    for (std::int32_t i = 0; i < step.argument_count; ++i) texts.append(text_of(step.arguments[i]));
    return texts.join(QStringLiteral(", "));
}

}  // namespace

MacroPanel::MacroPanel(CommandRunner& runner, QWidget* parent)
    : QWidget(parent),
      runner_(runner),
      record_(make_action(this, Icon::Record, tr("&Record"), QKeySequence(tr("Ctrl+Alt+R")))),
      stop_(make_action(this, Icon::Stop, tr("&Stop"), QKeySequence(tr("Ctrl+Alt+S")))),
      play_(make_action(this, Icon::Play, tr("&Play"), QKeySequence(tr("Ctrl+Alt+P")))),
      load_(make_action(this, Icon::Open, tr("&Load…"))),
      save_(make_action(this, Icon::Save, tr("S&ave…"))),
      steps_(new QTreeWidget) {
    auto* bar = new QToolBar;
    bar->setIconSize({20, 20});
    bar->addActions({record_, stop_, play_});
    bar->addSeparator();
    bar->addActions({load_, save_});
    steps_->setHeaderHidden(true);
    steps_->setColumnCount(2);
    steps_->setUniformRowHeights(true);
    steps_->setFrameShape(QFrame::NoFrame);
    steps_->setAccessibleName(tr("Steps of the macro"));
    steps_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar);
    column->addWidget(steps_, 1);
    connect(record_, &QAction::triggered, this, &MacroPanel::record);
    connect(stop_, &QAction::triggered, this, &MacroPanel::stop);
    connect(play_, &QAction::triggered, this, &MacroPanel::play);
    connect(load_, &QAction::triggered, this, &MacroPanel::load);
    connect(save_, &QAction::triggered, this, &MacroPanel::save);
    refresh();
}

QList<QAction*> MacroPanel::actions_of_menu() const { return {record_, stop_, play_, load_, save_}; }

void MacroPanel::refresh() {
    std::size_t count = 0;
    pixvane_macro_step_count(runner_.picture().view().control(), &count);
    const bool isRecording = runner_.picture().view().Recording();
    record_->setEnabled(!isRecording);
    stop_->setEnabled(isRecording);
    play_->setEnabled(!isRecording && count > 0 && !runner_.picture().is_empty());
    load_->setEnabled(!isRecording);
    save_->setEnabled(!isRecording && count > 0);
    if (count != shown_) list_steps(count);
}

void MacroPanel::list_steps(std::size_t count) {
    steps_->clear();
    QTreeWidgetItem* settings = nullptr;
    bool isStart = true;
    for (std::size_t i = 0; i < count; ++i) {
        pixvane_macro_step step{};
        if (pixvane_macro_step_at(runner_.picture().view().control(), i, &step) != PIXVANE_OK) break;
        const QString name =
            step.member != nullptr ? QString::fromUtf8(step.member) : tr("Step %1").arg(step.code);
        const QStringList columns = {
            name, step.complete != 0 ? arguments_of(step) : tr("cut off: the macro ends here")};
        isStart = isStart && is_setting(step);
        if (isStart && settings == nullptr) settings = new QTreeWidgetItem(steps_, {tr("Drawing settings")});
        auto* item = new QTreeWidgetItem(columns);
        if (isStart)
            settings->addChild(item);
        else
            steps_->addTopLevelItem(item);
        item->setToolTip(1, columns[1]);
    }
    if (settings != nullptr) settings->setText(1, QString::number(settings->childCount()));
    steps_->scrollToBottom();
    shown_ = count;
}

void MacroPanel::record() {
    runner_.picture().view().BeginMacros();
    refresh();
}

void MacroPanel::stop() {
    runner_.picture().view().EndMacros();
    refresh();
}

void MacroPanel::play() {
    runner_.waiting(tr("Playing the macro"), [this] { runner_.picture().view().PlayMacros(); });
    runner_.picture().announce();
    emit played();
}

void MacroPanel::load() {
    const QString path = QFileDialog::getOpenFileName(this, tr("Load a macro"));
    if (path.isEmpty()) return;
    if (!runner_.picture().view().LoadMacros(path))
        QMessageBox::warning(this, tr("Load a macro"), tr("%1 is no macro that can be read.").arg(path));
    shown_ = static_cast<std::size_t>(-1);
    refresh();
}

void MacroPanel::save() {
    const QString path = QFileDialog::getSaveFileName(this, tr("Save the macro"));
    if (path.isEmpty()) return;
    if (!runner_.picture().view().SaveMacros(path))
        QMessageBox::warning(this, tr("Save the macro"), tr("%1 can't be written.").arg(path));
}

}  // namespace studio
