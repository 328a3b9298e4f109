// Editors for the arguments of commands and for settings, made from their rows in the table.
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariant>
#include <QWidget>

#include "members.h"

namespace studio {

class ArgumentEditor : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
    virtual QVariant value() const = 0;
    /// Shows a value without saying so.
    virtual void set_value(const QVariant& value) = 0;
    /// Whether the editor needs the whole width and explains itself.
    virtual bool is_wide() const { return false; }

signals:
    /// By the user.
    void edited();
};

/// Which numbers an editor offers, and what it calls itself.
struct EditorHints {
    QString label;
    double sliderMaximum = 0;  ///< beyond 0: instead of the row's, where the picture gives an end
    bool isNarrow = false;     ///< for a panel beside the picture
};

/// Sliders with numbers, colours, switches, kernels, texts, points, files, as the argument's kind wants it.
ArgumentEditor* make_editor(const Argument& argument, const EditorHints& hints, QWidget* parent);

}  // namespace studio
