// What the studio shows of the table of members: commands by category, settings, titles and labels.
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>
#include <vector>

#include "pixvane/pixvane.h"

namespace studio {

using Member = pixvane_member_info;
using Argument = pixvane_argument_info;

/// A category of the table in its own words, and some of its members in the order of the table.
struct Category {
    QString name;
    std::vector<const Member*> members;
};

/// Every command: what changes the picture by a step that can be undone.
const std::vector<Category>& command_categories();
/// Every property that can be put and that an editor can show.
const std::vector<Category>& setting_categories();
/// Every event.
std::vector<const Member*> events();
/// Null if the library has no member of this name.
const Member* find_member(QStringView name);

/// "Add simple border" for AddSimpleBorder.
QString title_of(const Member& member);
/// The category, translated.
QString title_of(const Category& category);
/// The line of help, translated, without a full stop.
QString help_of(const Member& member);
/// "Red value" for nRedVal.
QString label_of(const Member& member, const Argument& argument);

/// What a dialog shows first.
QVariant initial_value(const Argument& argument);
/// The first value of every argument.
QVariantList initial_values(const Member& member);

}  // namespace studio
