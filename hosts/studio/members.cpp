// What the studio shows of the table of members: commands by category, settings, titles and labels.
// SPDX-License-Identifier: MIT
#include "members.h"

#include <QColor>
#include <QCoreApplication>
#include <QHash>
#include <QPolygon>
#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

namespace studio {
namespace {

template <class Wanted>
std::vector<Category> categories_of(Wanted wanted) {
    std::vector<Category> categories;
    for (std::size_t i = 0; const Member* member = pixvane_member_at(i); ++i) {
        if (!wanted(*member)) continue;
        const QString name = QString::fromUtf8(member->category);
        auto place = std::find_if(categories.begin(), categories.end(),
                                  [&](const Category& category) { return category.name == name; });
        if (place == categories.end()) place = categories.insert(categories.end(), Category{name, {}});
        place->members.push_back(member);
    }
    return categories;
}

/// The words of a name in capitals and small letters: "BW levels" for BWLevels, "scale X" for ScaleX.
QStringList words_of(const QString& name) {
    QStringList words;
    for (int i = 0; i < name.size(); ++i) {
        const bool startsWord = words.isEmpty() || (name[i].isUpper() && !name[i - 1].isUpper()) ||
                                (name[i].isUpper() && i + 1 < name.size() && name[i + 1].isLower()) ||
                                (name[i].isDigit() && !name[i - 1].isDigit() && words.back().size() > 1);
        if (startsWord)
            words.append(name[i]);
        else
            words.last().append(name[i]);
    }
    // Abbreviations stay in capitals.
    for (QString& word : words) {
        if (word != word.toUpper()) word = word.toLower();
    }
    return words;
}

QString sentence_of(const QStringList& words) {
    QString sentence = words.join(QLatin1Char(' '));
    if (!sentence.isEmpty()) sentence[0] = sentence[0].toUpper();
    return sentence;
}

bool takes(const Member& member, const char* argument) {
    return std::any_of(member.arguments, member.arguments + member.argument_count,
                       [&](const Argument& a) { return qstrcmp(a.name, argument) == 0; });
}

}  // namespace

const std::vector<Category>& command_categories() {
    static const auto categories =
        categories_of([](const Member& m) { return m.type == PIXVANE_METHOD && m.edits != 0; });
    return categories;
}

const std::vector<Category>& setting_categories() {
    static const auto categories = categories_of([](const Member& m) {
        return m.type == PIXVANE_PROPERTY && m.writable != 0 && m.argument_count == 1 &&
               m.arguments[0].kind != PIXVANE_BYTES;
    });
    return categories;
}

std::vector<const Member*> events() {
    std::vector<const Member*> list;
    for (std::size_t i = 0; const Member* member = pixvane_member_at(i); ++i) {
        if (member->type == PIXVANE_EVENT) list.push_back(member);
    }
    return list;
}

const Member* find_member(QStringView name) {
    for (std::size_t i = 0; const Member* member = pixvane_member_at(i); ++i) {
        if (name == QLatin1String(member->name)) return member;
    }
    return nullptr;
}

QString title_of(const Member& member) {
    return QCoreApplication::translate(
        "Members", sentence_of(words_of(QString::fromLatin1(member.name))).toUtf8().constData());
}

QString title_of(const Category& category) {
    return QCoreApplication::translate("Members", category.name.toUtf8().constData());
}

QString help_of(const Member& member) {
    QString help = QCoreApplication::translate("Members", member.help);
    if (help.endsWith(QLatin1Char('.'))) help.chop(1);
    // As the labels beside the editors say it.
    for (int i = 0; i < member.argument_count; ++i) {
        const QString name = QString::fromLatin1(member.arguments[i].name);
        const QString label = label_of(member, member.arguments[i]);
        if (name != label)
            help.replace(QRegularExpression(QStringLiteral("\\b%1\\b").arg(name)), label.toLower());
    }
    return help;
}

QString label_of(const Member& member, const Argument& argument) {
    static const QHash<QString, QString> kWords = {{QStringLiteral("val"), QStringLiteral("value")},
                                                   {QStringLiteral("r"), QStringLiteral("red")},
                                                   {QStringLiteral("g"), QStringLiteral("green")},
                                                   {QStringLiteral("b"), QStringLiteral("blue")}};
    QStringList words = words_of(QString::fromLatin1(argument.name));
    // Small letters at the front tell a type.
    if (words.size() > 1 && (words.front() == QLatin1String("n") || words.front() == QLatin1String("p") ||
                             words.front() == QLatin1String("pp")))
        words.removeFirst();
    // One letter is a channel only where all three are there.
    const bool channels = takes(member, "R") && takes(member, "G") && takes(member, "B");
    for (QString& word : words) {
        if (word.size() > 1 || channels) word = kWords.value(word.toLower(), word);
    }
    return QCoreApplication::translate("Members", sentence_of(words).toUtf8().constData());
}

QVariant initial_value(const Argument& argument) {
    const double number = argument.has_default != 0 ? argument.default_value : 0;
    switch (argument.kind) {
        case PIXVANE_INT32:
            return static_cast<int>(number);
        case PIXVANE_DOUBLE:
            return number;
        case PIXVANE_BOOL:
            return number != 0;
        case PIXVANE_COLOR: {
            const int bgr = static_cast<int>(number);
            return QColor(bgr & 0xFF, bgr >> 8 & 0xFF, bgr >> 16 & 0xFF);
        }
        case PIXVANE_STRING:
            return QString();
        case PIXVANE_BYTES:
            return QByteArray();
        case PIXVANE_POINTS:
            return QPolygon();
        default:
            return QVariant::fromValue(QList<int>());
    }
}

QVariantList initial_values(const Member& member) {
    QVariantList values;
    for (int i = 0; i < member.argument_count; ++i) values.append(initial_value(member.arguments[i]));
    return values;
}

}  // namespace studio
