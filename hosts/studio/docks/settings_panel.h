// Pen, brush, font and the like: an editor for every setting that drawing uses, by category.
// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>
#include <vector>

#include "argument_editors.h"
#include "picture.h"

class QLabel;
class QVBoxLayout;

namespace studio {

/// Made from the table: its settings are the properties that a macro keeps.
class SettingsPanel : public QScrollArea {
    Q_OBJECT

public:
    explicit SettingsPanel(Picture& picture, QWidget* parent = nullptr);

    /// Shows the settings as they are now.
    void refresh();

private:
    struct Entry {
        const Member* setting;
        ArgumentEditor* editor;
    };
    void add_section(QVBoxLayout& column, const Category& category, bool isOpen);
    ArgumentEditor* editor_for(const Member& setting, const QString& label, QWidget* parent);

    Picture& picture_;
    std::vector<Entry> entries_;
    std::vector<QLabel*> labels_;
};

}  // namespace studio
