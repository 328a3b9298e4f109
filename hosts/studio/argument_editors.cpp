// Editors for the arguments of commands and for settings, made from their rows in the table.
// SPDX-License-Identifier: MIT
#include "argument_editors.h"

#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPolygon>
#include <QPushButton>
#include <QRegularExpression>

#include "color_button.h"
#include "kernel_grid.h"
#include "number_editor.h"

namespace studio {
namespace {

/// An editor around one widget, which it names and gets the focus for.
class Around : public ArgumentEditor {
public:
    Around(QWidget* inner, const QString& label, QWidget* parent) : ArgumentEditor(parent) {
        auto* row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, 0, 0);
        row->addWidget(inner);
        inner->setAccessibleName(label);
        setFocusProxy(inner);
    }
};

class ColorEditor final : public Around {
public:
    ColorEditor(const QString& label, QWidget* parent) : ColorEditor(new ColorButton, label, parent) {}
    QVariant value() const override { return button_->color(); }
    void set_value(const QVariant& value) override { button_->set_color(value.value<QColor>()); }

private:
    ColorEditor(ColorButton* button, const QString& label, QWidget* parent)
        : Around(button, label, parent), button_(button) {
        static_cast<QHBoxLayout*>(layout())->addStretch();
        connect(button, &ColorButton::chosen, this, &ArgumentEditor::edited);
    }
    ColorButton* button_;
};

class SwitchEditor final : public Around {
public:
    SwitchEditor(const QString& label, QWidget* parent) : SwitchEditor(new QCheckBox, label, parent) {}
    QVariant value() const override { return box_->isChecked(); }
    void set_value(const QVariant& value) override { box_->setChecked(value.toBool()); }

private:
    SwitchEditor(QCheckBox* box, const QString& label, QWidget* parent)
        : Around(box, label, parent), box_(box) {
        connect(box, &QCheckBox::clicked, this, &ArgumentEditor::edited);
    }
    QCheckBox* box_;
};

class KernelEditor final : public Around {
public:
    KernelEditor(const QString& label, QWidget* parent) : KernelEditor(new KernelGrid, label, parent) {}
    QVariant value() const override { return QVariant::fromValue(grid_->weights()); }
    void set_value(const QVariant& value) override { grid_->set_weights(value.value<QList<int>>()); }
    bool is_wide() const override { return true; }

private:
    KernelEditor(KernelGrid* grid, const QString& label, QWidget* parent)
        : Around(grid, label, parent), grid_(grid) {
        connect(grid, &KernelGrid::edited, this, &ArgumentEditor::edited);
    }
    KernelGrid* grid_;
};

class TextEditor final : public Around {
public:
    TextEditor(const QString& label, QWidget* parent) : TextEditor(new QLineEdit, label, parent) {}
    QVariant value() const override { return line_->text(); }
    void set_value(const QVariant& value) override { line_->setText(value.toString()); }

private:
    TextEditor(QLineEdit* line, const QString& label, QWidget* parent)
        : Around(line, label, parent), line_(line) {
        connect(line, &QLineEdit::textEdited, this, &ArgumentEditor::edited);
    }
    QLineEdit* line_;
};

/// Points as "10,20 300,40".
class PointsEditor final : public Around {
public:
    PointsEditor(const QString& label, QWidget* parent) : PointsEditor(new QLineEdit, label, parent) {}
    QVariant value() const override {
        static const QRegularExpression kPoint(QStringLiteral("(-?\\d+)\\s*,\\s*(-?\\d+)"));
        QPolygon points;
        for (auto found = kPoint.globalMatch(line_->text()); found.hasNext();) {
            const QRegularExpressionMatch point = found.next();
            points.append(QPoint(point.captured(1).toInt(), point.captured(2).toInt()));
        }
        return points;
    }
    void set_value(const QVariant& value) override {
        QStringList points;
        const auto polygon = value.value<QPolygon>();
        for (const QPoint& point : polygon)
            points.append(QStringLiteral("%1,%2").arg(point.x()).arg(point.y()));
        line_->setText(points.join(QLatin1Char(' ')));
    }

private:
    PointsEditor(QLineEdit* line, const QString& label, QWidget* parent)
        : Around(line, label, parent), line_(line) {
        line->setPlaceholderText(QStringLiteral("10,20 300,40"));
        connect(line, &QLineEdit::textEdited, this, &ArgumentEditor::edited);
    }
    QLineEdit* line_;
};

/// Bytes that come from a file.
class FileEditor final : public Around {
public:
    FileEditor(const QString& label, QWidget* parent) : FileEditor(new QPushButton, label, parent) {}
    QVariant value() const override { return bytes_; }
    void set_value(const QVariant& value) override {
        bytes_ = value.toByteArray();
        button_->setText(ArgumentEditor::tr("Choose a file…"));
    }

private:
    FileEditor(QPushButton* button, const QString& label, QWidget* parent)
        : Around(button, label, parent), button_(button) {
        connect(button, &QPushButton::clicked, this, [this] { choose(); });
    }
    void choose() {
        const QString path = QFileDialog::getOpenFileName(window(), button_->accessibleName());
        QFile file(path);
        if (path.isEmpty() || !file.open(QIODevice::ReadOnly)) return;
        bytes_ = file.readAll();
        button_->setText(path.section(QLatin1Char('/'), -1));
        emit edited();
    }
    QPushButton* button_;
    QByteArray bytes_;
};

}  // namespace

ArgumentEditor* make_editor(const Argument& argument, const EditorHints& hints, QWidget* parent) {
    ArgumentEditor* editor = nullptr;
    switch (argument.kind) {
        case PIXVANE_COLOR:
            editor = new ColorEditor(hints.label, parent);
            break;
        case PIXVANE_BOOL:
            editor = new SwitchEditor(hints.label, parent);
            break;
        case PIXVANE_STRING:
            editor = new TextEditor(hints.label, parent);
            break;
        case PIXVANE_BYTES:
            editor = new FileEditor(hints.label, parent);
            break;
        case PIXVANE_POINTS:
            editor = new PointsEditor(hints.label, parent);
            break;
        case PIXVANE_INT32_ARRAY:
            editor = new KernelEditor(hints.label, parent);
            break;
        default:
            editor = new NumberEditor(argument, hints, parent);
            break;
    }
    editor->set_value(initial_value(argument));
    return editor;
}

}  // namespace studio
