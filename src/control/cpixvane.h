// The control: owns the document and its view, and is what every member works on.
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "control/events.h"
#include "control/held_call.h"
#include "control/ports.h"
#include "control/value.h"
#include "core/image_store.h"
#include "core/parallel_rows.h"
#include "draw/draw_settings.h"
#include "macros/macro_script.h"
#include "view/mouse_dispatch.h"
#include "view/painter.h"
#include "view/scroll_window.h"

namespace pixvane {

struct Row;

/// Members keep their published names; the table (member_table.h) says what hosts may call. Bad arguments
/// make a member do nothing.
class CPixvane final : private MouseHost {
public:
    explicit CPixvane(const Ports& ports)
        : store_(ports.codec, ports.files),
          files_(ports.files),
          window_(ports.window),
          rasterizer_(ports.rasterizer),
          mouse_(*this, store_.view, scrollWindow_, ports.window) {}
    CPixvane(const CPixvane&) = delete;
    CPixvane& operator=(const CPixvane&) = delete;

    ImageStore& store() { return store_; }
    Events& events() { return events_; }
    Rasterizer& rasterizer() { return rasterizer_; }
    /// What the user or a macro draws with.
    DrawSettings& settings() { return settings_; }
    const MacroScript& macro() const { return macro_; }

    // The pipeline of a command is: record, run on the store, Repaint.
    /// Adds a step to the macro while one is recorded: the caller's own arguments, before anything is
    /// checked.
    void record(const Row& row, std::span<const Value> arguments) {
        if (recording_) append_step(row, arguments);
    }
    /// Composes a frame and, once it is whole, tells the window; nothing while updates are suspended, before
    /// the first resize, or without memory.
    void Repaint() override;
    /// The last frame; of size 0 x 0 as long as none was composed. It stays until the next repaint.
    ConstPixelBuffer frame() const { return painter_.frame(); }

    // Documents.
    void NewImage(std::int32_t width, std::int32_t height);
    bool LoadImage(std::string_view fileName);
    bool LoadFromImageArray(MaybeBytes array, std::int32_t width, std::int32_t height);
    void Empty();
    bool SaveImage(std::string_view fileName, std::int32_t type);
    bool IsImageFile(std::string_view fileName);
    std::optional<ByteBuffer> Picture();
    void put_Picture(MaybeBytes file);
    std::shared_ptr<const Bitmap> GetImageArray() { return store_.GetImageArray(); }

    // What is there.
    std::int32_t ImageWidth() { return store_.width(); }
    std::int32_t ImageHeight() { return store_.height(); }
    std::int32_t FramesCount() { return store_.frame_count(); }
    bool IsEmpty() { return store_.is_empty(); }
    bool Modified() { return store_.modified(); }
    Color GetPixel(std::int32_t x, std::int32_t y);
    std::optional<filters::Histogram> GetRHistogram() { return histogram(filters::Channel::Red); }
    std::optional<filters::Histogram> GetGHistogram() { return histogram(filters::Channel::Green); }
    std::optional<filters::Histogram> GetBHistogram() { return histogram(filters::Channel::Blue); }
    std::optional<filters::Histogram> GetLHistogram();

    // History.
    void Undo();
    void Redo();
    bool UndoEnable() { return store_.can_undo(); }
    bool RedoEnable() { return store_.can_redo(); }
    std::int32_t HistoryStates() { return store_.kept_states(); }
    void put_HistoryStates(std::int32_t count);

    // Settings.
    std::int32_t JpegQuality() { return store_.JpegQuality; }
    void put_JpegQuality(std::int32_t quality);
    Color BitmapBackColor() { return to_color(store_.BitmapBackColor); }
    void put_BitmapBackColor(Color color) { put_color(store_.BitmapBackColor, color); }
    Color FrameColor() { return to_color(store_.FrameColor); }
    void put_FrameColor(Color color) { put_color(store_.FrameColor, color); }
    Color BackColor1() { return to_color(backColor1_); }
    void put_BackColor1(Color color) { put_color(backColor1_, color); }
    bool AutoResize() { return autoResize_; }
    void put_AutoResize(bool autoResize) { autoResize_ = autoResize; }

    /// Repaints only if there is a picture.
    bool ShowBorder() { return showBorder_; }
    void put_ShowBorder(bool show);
    bool ShowDetails() { return showDetails_; }
    void put_ShowDetails(bool show);

    // The overview panel.
    bool ScrollWindowVisible() { return scrollWindow_.visible; }
    void put_ScrollWindowVisible(bool visible);
    Color ScrollWindowColor() { return to_color(scrollWindow_.color); }
    /// Repaints only if the panel is visible.
    void put_ScrollWindowColor(Color color);
    ScrollWindow& scroll_window() { return scrollWindow_; }

    // View.
    void BeginUpdate() { updatesSuspended_ = true; }
    void EndUpdate();
    double Zoom() { return store_.view.zoom(); }
    void ZoomIn();
    void ZoomOut();
    void ActialSize();
    void ZoomToFit();

    // The mouse.
    /// The tool that is chosen; 0: none.
    std::int32_t PaintStatus() { return mouse_.mode(); }
    /// Nothing without a picture. Resets every tool, also where the mode stays.
    void put_PaintStatus(std::int32_t mode);
    MouseDispatch& mouse() { return mouse_; }

    // Live preview: what a command would make of the picture is shown, and nothing is kept of it. Any
    // command, macro, step of the history, new document or mode ends it, unapplied.
    void BeginPreview();
    /// The command and its arguments fit. Nothing unless a preview was begun.
    void Preview(std::string_view command, Values arguments);
    /// With `apply` the command that was previewed last is called.
    void EndPreview(bool apply);
    void end_preview();

    // What the window reports.
    void window_resized(std::int32_t width, std::int32_t height);
    void window_zoom_at(std::int32_t steps, WindowPoint at);
    void window_pan(std::int32_t dx, std::int32_t dy);
    /// Fires OnDropFile; the picture stays.
    void file_dropped(std::string_view path);
    void window_mouse(const MouseMessage& message) { mouse_.handle(message); }
    void window_timer(std::int32_t id) { mouse_.tick(id); }
    /// Gives timers and capture back.
    void window_destroyed() { mouse_.release_window(); }

    // Fonts.
    std::int32_t FontCount();
    /// Empty if there is no such family.
    std::string FontName(std::int32_t index);
    /// Chooses a family by its name; nothing if there is none.
    void SetupFontByName(std::string_view name);
    /// The family that text is drawn in until another is chosen.
    std::int32_t default_font_index();

    // Textures.
    std::string TextureFileName() { return settings_.brush.textureFileName; }
    void put_TextureFileName(std::string_view fileName);

    // Macros.
    void BeginMacros();
    void EndMacros() { recording_ = false; }
    bool Recording() { return recording_; }
    bool SaveMacros(std::string_view path);
    bool LoadMacros(std::string_view path);
    void PlayMacros();

private:
    // MouseHost
    ConstPixelBuffer current_picture() const override { return store_.current(); }
    const DrawSettings& draw_settings() const override { return settings_; }
    void run_command(std::string_view command, std::span<const Value> arguments) override;
    void fire_event(std::string_view event, std::span<const Value> arguments) override {
        events_.fire(event, arguments);
    }

    /// Before the document is replaced.
    void leave_document() { end_preview(); }
    /// After it was.
    void leave_tool();
    void change_zoom(void (Viewport::*change)());
    template <class Change>
    bool change_view(Change change);
    void append_step(const Row& row, std::span<const Value> arguments);
    std::optional<filters::Histogram> histogram(filters::Channel channel);
    void put_color(Pixel& setting, Color color);
    bool paint();

    WorkerThreads workers_;
    ImageStore store_;
    FileSystem& files_;
    HostWindow& window_;
    Rasterizer& rasterizer_;
    DrawSettings settings_;
    Events events_;
    MacroScript macro_;
    bool recording_ = false;
    bool playingMacro_ = false;
    ScrollWindow scrollWindow_;
    MouseDispatch mouse_;
    bool previewIsOpen_ = false;
    std::optional<HeldCall> previewed_;
    Painter painter_{rasterizer_};
    bool showBorder_ = true;
    bool showDetails_ = false;
    Pixel backColor1_ = 0xFF00008B;
    bool autoResize_ = false;
    bool updatesSuspended_ = false;
};

}  // namespace pixvane
