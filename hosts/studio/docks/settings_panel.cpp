// Pen, brush, font and the like: an editor for every setting that drawing uses, by category.
// SPDX-License-Identifier: MIT
#include "docks/settings_panel.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace studio {
namespace {

/// A number that stands for a name in a list of the control, such as a font.
class NamedNumber final : public ArgumentEditor {
public:
    NamedNumber(Picture& picture, const Member& count, const Member& name, const QString& label,
                QWidget* parent)
        : ArgumentEditor(parent), box_(new QComboBox) {
        const int names = picture.call(count).toInt();
        for (int i = 0; i < names; ++i) box_->addItem(picture.call(name, {i}).toString());
        box_->setAccessibleName(label);
        box_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box_->setMinimumContentsLength(12);
        auto* row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, 0, 0);
        row->addWidget(box_);
        setFocusProxy(box_);
        connect(box_, &QComboBox::activated, this, &ArgumentEditor::edited);
    }
    QVariant value() const override { return box_->currentIndex(); }
    void set_value(const QVariant& value) override { box_->setCurrentIndex(value.toInt()); }

private:
    QComboBox* box_;
};

/// A file's name, chosen rather than typed.
class FileName final : public ArgumentEditor {
public:
    FileName(const QString& label, QWidget* parent) : ArgumentEditor(parent), button_(new QPushButton) {
        button_->setAccessibleName(label);
        auto* row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, 0, 0);
        row->addWidget(button_);
        setFocusProxy(button_);
        connect(button_, &QPushButton::clicked, this, [this] { choose(); });
        set_value({});
    }
    QVariant value() const override { return path_; }
    void set_value(const QVariant& value) override {
        path_ = value.toString();
        button_->setText(path_.isEmpty() ? tr("Choose a file…") : QFileInfo(path_).fileName());
    }

private:
    void choose() {
        const QString path = QFileDialog::getOpenFileName(window(), button_->accessibleName());
        if (path.isEmpty()) return;
        set_value(path);
        emit edited();
    }
    QPushButton* button_;
    QString path_;
};

bool is_drawing_setting(const Member& member) { return member.macro_code >= 0; }

/// The label without the words that the section says already: "width" of the pen.
QString short_label(const Member& setting, const Category& category) {
    QString title = title_of(setting);
    if (title.endsWith(QLatin1String(" file name"))) title.chop(10);
    const QString prefix = category.name.section(QLatin1Char(' '), -1) + QLatin1Char(' ');
    if (!title.startsWith(prefix, Qt::CaseInsensitive)) return title;
    QString rest = title.mid(prefix.size());
    rest[0] = rest[0].toUpper();
    return rest;
}

}  // namespace

SettingsPanel::SettingsPanel(Picture& picture, QWidget* parent) : QScrollArea(parent), picture_(picture) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(10, 8, 10, 8);
    column->setSpacing(6);
    for (Category category : setting_categories()) {
        std::erase_if(category.members, [](const Member* m) { return !is_drawing_setting(*m); });
        if (!category.members.empty())
            add_section(*column, category,
                        category.name == QLatin1String("Pen") || category.name == QLatin1String("Brush"));
    }
    column->addStretch(1);
    // One line of labels for all sections.
    int widest = 0;
    for (const QLabel* label : labels_) widest = std::max(widest, label->sizeHint().width());
    for (QLabel* label : labels_) {
        label->setMinimumWidth(widest);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    setWidget(page);
    refresh();
}

void SettingsPanel::refresh() {
    for (const Entry& entry : entries_) entry.editor->set_value(picture_.call(*entry.setting));
}

void SettingsPanel::add_section(QVBoxLayout& column, const Category& category, bool isOpen) {
    auto* head = new QToolButton;
    head->setText(title_of(category));
    head->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    head->setArrowType(isOpen ? Qt::DownArrow : Qt::RightArrow);
    head->setAutoRaise(true);
    QFont bold = head->font();
    bold.setBold(true);
    head->setFont(bold);
    column.addWidget(head);

    auto* body = new QWidget;
    auto* form = new QFormLayout(body);
    form->setContentsMargins(6, 0, 0, 6);
    form->setHorizontalSpacing(10);
    form->setVerticalSpacing(6);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (const Member* setting : category.members) {
        const QString label = short_label(*setting, category);
        ArgumentEditor* editor = editor_for(*setting, label, body);
        connect(editor, &ArgumentEditor::edited, this, [this, setting, editor] {
            picture_.call(*setting, {editor->value()});
            // What the control refused goes back.
            editor->set_value(picture_.call(*setting));
        });
        auto* text = new QLabel(label);
        text->setBuddy(editor);
        text->setToolTip(help_of(*setting));
        editor->setToolTip(help_of(*setting));
        form->addRow(text, editor);
        labels_.push_back(text);
        entries_.push_back({setting, editor});
    }
    body->setVisible(isOpen);
    column.addWidget(body);
    connect(head, &QToolButton::clicked, body, [head, body] {
        const bool opens = body->isHidden();
        head->setArrowType(opens ? Qt::DownArrow : Qt::RightArrow);
        body->setVisible(opens);
    });
}

ArgumentEditor* SettingsPanel::editor_for(const Member& setting, const QString& label, QWidget* parent) {
    const QString name = QString::fromLatin1(setting.name);
    if (name.endsWith(QLatin1String("Index"))) {
        const QString list = name.chopped(5);
        const Member* count = find_member(list + QStringLiteral("Count"));
        const Member* names = find_member(list + QStringLiteral("Name"));
        if (count != nullptr && names != nullptr)
            return new NamedNumber(picture_, *count, *names, label, parent);
    }
    if (name.endsWith(QLatin1String("FileName"))) return new FileName(label, parent);
    return make_editor(setting.arguments[0], {.label = label, .isNarrow = true}, parent);
}

}  // namespace studio
