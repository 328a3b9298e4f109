// The dialog of a command, made from its row: an editor for each argument, and a live preview in the view.
// SPDX-License-Identifier: MIT
#include "command_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "icons.h"

namespace studio {
namespace {

bool is_named(const Argument& argument, const char* name) { return qstrcmp(argument.name, name) == 0; }

/// The size of the picture where the argument counts along one of its sides; 0 elsewhere.
int side_for(const Argument& argument, QSize picture) {
    if (argument.kind != PIXVANE_INT32) return 0;
    if (is_named(argument, "X")) return picture.width();
    if (is_named(argument, "Y")) return picture.height();
    return 0;
}

}  // namespace

CommandDialog::CommandDialog(CommandRunner& runner, const Member& command, QWidget* parent)
    : QDialog(parent), runner_(runner), command_(command), preview_(runner, command) {
    setWindowTitle(title_of(command));
    setObjectName(QStringLiteral("commandDialog"));
    setAttribute(Qt::WA_DeleteOnClose);

    auto* title = new QLabel(title_of(command));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.25);
    large.setBold(true);
    title->setFont(large);
    auto* help = new QLabel(help_of(command));
    help->setWordWrap(true);
    QPalette soft = help->palette();
    soft.setColor(QPalette::WindowText, soft.color(QPalette::PlaceholderText));
    help->setPalette(soft);

    auto* form = new QFormLayout;
    form->setHorizontalSpacing(14);
    form->setVerticalSpacing(10);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    add_editors(*form);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(18, 16, 18, 16);
    column->setSpacing(14);
    auto* head = new QVBoxLayout;
    head->setSpacing(4);
    head->addWidget(title);
    head->addWidget(help);
    column->addLayout(head);
    column->addLayout(form);
    column->addStretch(1);
    add_buttons(*column);
    setMinimumWidth(400);

    connect(&preview_, &LivePreview::shown, this, &CommandDialog::shown);
    preview_.request(values());
}

QVariantList CommandDialog::values() const {
    QVariantList values;
    for (const ArgumentEditor* editor : editors_) values.append(editor->value());
    return values;
}

void CommandDialog::done(int result) {
    preview_.finish(result == Accepted);
    QDialog::done(result);
}

void CommandDialog::add_editors(QFormLayout& form) {
    for (int i = 0; i < command_.argument_count; ++i) {
        const Argument& argument = command_.arguments[i];
        const QString label = label_of(command_, argument);
        const int side = side_for(argument, runner_.picture().size());
        auto* editor =
            make_editor(argument, {.label = label, .sliderMaximum = static_cast<double>(side)}, this);
        editor->set_value(start_value(argument));
        connect(editor, &ArgumentEditor::edited, this, [this] { preview_.request(values()); });
        if (editor->is_wide())
            form.addRow(editor);
        else
            form.addRow(label, editor);
        editors_.push_back(editor);
    }
    if (editor_of("X") != nullptr && editor_of("Y") != nullptr)
        connect(&runner_.picture().view(), &PixvaneWidget::OnMouseUp, this, [this](int button, int x, int y) {
            if (button == PIXVANE_LEFT) take_point(x, y);
        });
}

void CommandDialog::add_buttons(QLayout& column) {
    auto* resetButton = new QPushButton(icon(Icon::Reset), tr("&Reset"));
    resetButton->setToolTip(tr("Back to the values at the start"));
    resetButton->setAutoDefault(false);
    connect(resetButton, &QPushButton::clicked, this, &CommandDialog::reset);

    auto* before = new QPushButton(icon(Icon::Compare), tr("&Before"));
    before->setObjectName(QStringLiteral("before"));
    before->setToolTip(tr("Press and hold to see the picture as it was"));
    before->setAutoDefault(false);
    connect(before, &QPushButton::pressed, this, [this] { preview_.show_before(true); });
    connect(before, &QPushButton::released, this, [this] { preview_.show_before(false); });

    auto* close = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    for (QAbstractButton* button : close->buttons()) button->setIcon({});
    close->button(QDialogButtonBox::Ok)->setText(tr("&Apply"));
    close->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(close, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(resetButton);
    row->addWidget(before);
    row->addSpacing(24);
    row->addStretch(1);
    row->addWidget(close);
    static_cast<QVBoxLayout&>(column).addLayout(row);
}

void CommandDialog::reset() {
    for (std::size_t i = 0; i < editors_.size(); ++i)
        editors_[i]->set_value(start_value(command_.arguments[i]));
    preview_.request(values());
}

void CommandDialog::take_point(int x, int y) {
    editor_of("X")->set_value(x);
    editor_of("Y")->set_value(y);
    preview_.request(values());
}

ArgumentEditor* CommandDialog::editor_of(const char* argument) const {
    for (std::size_t i = 0; i < editors_.size(); ++i) {
        if (is_named(command_.arguments[i], argument)) return editors_[i];
    }
    return nullptr;
}

/// What the row says, except that points start in the middle and sizes at the picture's.
QVariant CommandDialog::start_value(const Argument& argument) const {
    const QSize size = runner_.picture().size();
    if (const int side = side_for(argument, size); side > 0) return side / 2;
    bool takesSize = false;
    for (int i = 0; i < command_.argument_count; ++i) takesSize |= is_named(command_.arguments[i], "Height");
    if (takesSize && is_named(argument, "Width")) return size.width();
    if (takesSize && is_named(argument, "Height")) return size.height();
    return initial_value(argument);
}

}  // namespace studio
