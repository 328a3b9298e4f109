// What the benchmark measures: one table of rows.
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "control.h"
#include "files.h"

namespace bench {

constexpr std::int32_t kWidth = 3840;
constexpr std::int32_t kHeight = 2160;

enum class Kind {
    Edit,  ///< an edit of the 4K picture, its history step included; undone before the next
    Read,  ///< something read from the 4K picture
    Load4K,
    Load24M,  ///< LoadImage of a file that was saved with the row's type
    Save4K,
    Save24M,  ///< SaveImage with the row's type
    View,     ///< a repaint of the 24-megapixel picture in a window of 1920 x 1080, at the row's zoom
    Drag,     ///< a drag of it by kDragSteps moves of the mouse, each of them a repaint
};

constexpr std::int32_t kDragSteps = 200;

struct Row {
    const char* label;
    Kind kind;
    const char* member;
    std::vector<pixvane_value> arguments;  ///< of files: the type alone; of views: zoom, overview
    std::optional<double> goal;            ///< as a multiple of memcpy; none if none was set
};

/// All rows, in the order of the table.
std::vector<Row> all_rows();

/// The pictures, controls and files that rows work on, each made when a row first wants it.
class Workplace {
public:
    /// `source` is the picture to measure with; null for the made-up photograph.
    explicit Workplace(const Picture* source) : source_(source) {}

    /// Brings what the row works on to where it starts from. Not measured.
    void prepare(const Row& row);
    /// What is measured.
    void run(const Row& row);
    /// Checks that the row did its work and takes it back. Not measured.
    void finish(const Row& row);
    /// Bytes of the file that the row reads or writes; none if it does neither.
    std::optional<std::uintmax_t> file_size(const Row& row) const;
    /// How many frames the row composes, where they are to be counted.
    std::optional<std::int32_t> frames(const Row& row) const;

private:
    Control& small();
    Control& large();
    Control& loader();
    Control& subject(const Row& row);
    void show(const Row& row);
    std::string path(const Row& row) const;

    const Picture* source_;
    TemporaryFolder folder_;
    std::unique_ptr<Control> small_;
    std::unique_ptr<Control> large_;
    std::unique_ptr<Control> loader_;
    pixvane_value result_{};
};

}  // namespace bench
