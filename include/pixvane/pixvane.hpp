// Pixvane for C++ hosts: every member as a typed method. Written by tools/write_bindings.py; do not edit.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pixvane/control.hpp"

namespace pixvane {

/// An image-editing control. A property X is read by X() and put by put_X(value); on_E(handler) listens to
/// the event E until off() of the number that it returns. Colours are 0x00BBGGRR, see rgb(). A call that the
/// control refuses throws Error; a member that has nothing to return gives an empty vector or nullopt.
class IPixvane : public Control {
public:
    using Control::Control;
    // Lines are broken where the program that writes them breaks them.
    // clang-format off

    // ---- Document ----

    /// Starts a new picture filled with BitmapBackColor.
    /// Width: integer, 4 to 65535, slider 4 to 8000, default 800.
    /// Height: integer, 4 to 65535, slider 4 to 8000, default 600.
    void NewImage(std::int32_t Width, std::int32_t Height) {
        static const std::int32_t member = pixvane_find_member("NewImage");
        call("NewImage", member, to_value(Width), to_value(Height));
    }
    /// Drops the picture and its history.
    void Empty() {
        static const std::int32_t member = pixvane_find_member("Empty");
        call("Empty", member);
    }
    /// Whether the control holds no picture.
    bool IsEmpty() {
        static const std::int32_t member = pixvane_find_member("IsEmpty");
        return call("IsEmpty", member).i != 0;
    }
    /// Width of the picture in pixels, 0 when empty.
    std::int32_t ImageWidth() {
        static const std::int32_t member = pixvane_find_member("ImageWidth");
        return call("ImageWidth", member).i;
    }
    /// Height of the picture in pixels, 0 when empty.
    std::int32_t ImageHeight() {
        static const std::int32_t member = pixvane_find_member("ImageHeight");
        return call("ImageHeight", member).i;
    }
    /// Frames or pages of the file that the picture came from, 0 when empty.
    std::int32_t FramesCount() {
        static const std::int32_t member = pixvane_find_member("FramesCount");
        return call("FramesCount", member).i;
    }
    /// Colour of a pixel, 0 outside of the picture.
    std::uint32_t GetPixel(std::int32_t X, std::int32_t Y) {
        static const std::int32_t member = pixvane_find_member("GetPixel");
        return static_cast<std::uint32_t>(call("GetPixel", member, to_value(X), to_value(Y)).i);
    }
    /// Colour of new, cleared and enlarged canvas.
    std::uint32_t BitmapBackColor() {
        static const std::int32_t member = pixvane_find_member("BitmapBackColor");
        return static_cast<std::uint32_t>(call("BitmapBackColor", member).i);
    }
    /// Colour of new, cleared and enlarged canvas.
    /// Value: color, default 0xFFFFFF.
    void put_BitmapBackColor(std::uint32_t Value) {
        static const std::int32_t member = pixvane_find_member("BitmapBackColor");
        call("BitmapBackColor", member, pixvane_color(Value));
    }
    /// The picture as a BMP file of 24 bits over white; put takes any picture file.
    std::optional<std::vector<std::uint8_t>> Picture() {
        static const std::int32_t member = pixvane_find_member("Picture");
        const pixvane_value result = call("Picture", member);
        if (result.kind == PIXVANE_NULL) return std::nullopt;
        return take<std::vector<std::uint8_t>>("Picture", result);
    }
    /// The picture as a BMP file of 24 bits over white; put takes any picture file.
    void put_Picture(View<std::uint8_t> Value) {
        static const std::int32_t member = pixvane_find_member("Picture");
        call("Picture", member, to_value(Value));
    }

    // ---- Files ----

    /// Loads a picture file; false, and the control is empty, if it can't be read.
    bool LoadImage(std::string_view FileName) {
        static const std::int32_t member = pixvane_find_member("LoadImage");
        return call("LoadImage", member, to_value(FileName)).i != 0;
    }
    /// Saves the picture: 0 BMP, 1 JPEG, 2 GIF, 3 TIFF, 4 PNG; false if it can't be written.
    /// nType: integer, 0 to 4, slider 0 to 4, default 4.
    bool SaveImage(std::string_view FileName, std::int32_t nType) {
        static const std::int32_t member = pixvane_find_member("SaveImage");
        return call("SaveImage", member, to_value(FileName), to_value(nType)).i != 0;
    }
    /// Whether a file is a picture that can be loaded.
    bool IsImageFile(std::string_view FileName) {
        static const std::int32_t member = pixvane_find_member("IsImageFile");
        return call("IsImageFile", member, to_value(FileName)).i != 0;
    }
    /// Quality of saved JPEG files; limited to 0..100.
    std::int32_t JpegQuality() {
        static const std::int32_t member = pixvane_find_member("JpegQuality");
        return call("JpegQuality", member).i;
    }
    /// Quality of saved JPEG files; limited to 0..100.
    /// Value: integer, slider 0 to 100, default 90.
    void put_JpegQuality(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("JpegQuality");
        call("JpegQuality", member, to_value(Value));
    }
    /// A file was dropped on the control; nothing is loaded.
    std::int32_t on_OnDropFile(std::function<void(std::string_view FileName)> handler) {
        return on("OnDropFile", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(text_of(values[0]));
        });
    }

    // ---- History ----

    /// Goes back one step of the history.
    void Undo() {
        static const std::int32_t member = pixvane_find_member("Undo");
        call("Undo", member);
    }
    /// Goes forward again to a step that was undone.
    void Redo() {
        static const std::int32_t member = pixvane_find_member("Redo");
        call("Redo", member);
    }
    /// Whether Undo would go back.
    bool UndoEnable() {
        static const std::int32_t member = pixvane_find_member("UndoEnable");
        return call("UndoEnable", member).i != 0;
    }
    /// Whether Redo would go forward.
    bool RedoEnable() {
        static const std::int32_t member = pixvane_find_member("RedoEnable");
        return call("RedoEnable", member).i != 0;
    }
    /// How many states are kept, the current one too; a put drops what can be redone.
    std::int32_t HistoryStates() {
        static const std::int32_t member = pixvane_find_member("HistoryStates");
        return call("HistoryStates", member).i;
    }
    /// How many states are kept, the current one too; a put drops what can be redone.
    /// Value: integer, 2 to 16, slider 2 to 16, default 16.
    void put_HistoryStates(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("HistoryStates");
        call("HistoryStates", member, to_value(Value));
    }
    /// Whether the picture was edited since it was made, loaded or saved.
    bool Modified() {
        static const std::int32_t member = pixvane_find_member("Modified");
        return call("Modified", member).i != 0;
    }

    // ---- Histograms and arrays ----

    /// Counts of the 256 values of red; null when empty.
    std::vector<std::int32_t> GetRHistogram() {
        static const std::int32_t member = pixvane_find_member("GetRHistogram");
        const pixvane_value result = call("GetRHistogram", member);
        return take<std::vector<std::int32_t>>("GetRHistogram", result);
    }
    /// Counts of the 256 values of green; null when empty.
    std::vector<std::int32_t> GetGHistogram() {
        static const std::int32_t member = pixvane_find_member("GetGHistogram");
        const pixvane_value result = call("GetGHistogram", member);
        return take<std::vector<std::int32_t>>("GetGHistogram", result);
    }
    /// Counts of the 256 values of blue; null when empty.
    std::vector<std::int32_t> GetBHistogram() {
        static const std::int32_t member = pixvane_find_member("GetBHistogram");
        const pixvane_value result = call("GetBHistogram", member);
        return take<std::vector<std::int32_t>>("GetBHistogram", result);
    }
    /// Counts of the 256 values of luminance; null when empty.
    std::vector<std::int32_t> GetLHistogram() {
        static const std::int32_t member = pixvane_find_member("GetLHistogram");
        const pixvane_value result = call("GetLHistogram", member);
        return take<std::vector<std::int32_t>>("GetLHistogram", result);
    }
    /// The pixels as bytes B, G, R, A, rows top first; null when empty.
    std::optional<std::vector<std::uint8_t>> GetImageArray() {
        static const std::int32_t member = pixvane_find_member("GetImageArray");
        const pixvane_value result = call("GetImageArray", member);
        if (result.kind == PIXVANE_NULL) return std::nullopt;
        return take<std::vector<std::uint8_t>>("GetImageArray", result);
    }
    /// Makes pixels the picture: bytes B, G, R, A, rows top first, from 2 x 2 up.
    /// Width: integer, 2 to 65535.
    /// Height: integer, 2 to 65535.
    bool LoadFromImageArray(View<std::uint8_t> pArray, std::int32_t Width, std::int32_t Height) {
        static const std::int32_t member = pixvane_find_member("LoadFromImageArray");
        return call("LoadFromImageArray", member, to_value(pArray), to_value(Width), to_value(Height)).i != 0;
    }

    // ---- Colours ----

    /// Turns the picture grey by luma.
    void Desaturate() {
        static const std::int32_t member = pixvane_find_member("Desaturate");
        call("Desaturate", member);
    }
    /// Colour strength in percent.
    /// nValue: integer, slider -400 to 400, default 130.
    void Saturate(std::int32_t nValue) {
        static const std::int32_t member = pixvane_find_member("Saturate");
        call("Saturate", member, to_value(nValue));
    }
    /// Stretches each channel on its own, which takes a cast away.
    void Autocolor() {
        static const std::int32_t member = pixvane_find_member("Autocolor");
        call("Autocolor", member);
    }
    /// Contrast in percent, around the middle grey.
    /// nValue: integer, slider -400 to 400, default 120.
    void Contrast(std::int32_t nValue) {
        static const std::int32_t member = pixvane_find_member("Contrast");
        call("Contrast", member, to_value(nValue));
    }
    /// Adds to each channel.
    /// nRed: integer, slider -255 to 255, default 20.
    /// nGreen: integer, slider -255 to 255, default 20.
    /// nBlue: integer, slider -255 to 255, default 20.
    void Brightness(std::int32_t nRed, std::int32_t nGreen, std::int32_t nBlue) {
        static const std::int32_t member = pixvane_find_member("Brightness");
        call("Brightness", member, to_value(nRed), to_value(nGreen), to_value(nBlue));
    }
    /// Multiplies each channel, in percent.
    /// nRedVal: integer, at least 0, slider 0 to 400, default 110.
    /// nGreenVal: integer, at least 0, slider 0 to 400, default 110.
    /// nBlueVal: integer, at least 0, slider 0 to 400, default 110.
    void Lightness(std::int32_t nRedVal, std::int32_t nGreenVal, std::int32_t nBlueVal) {
        static const std::int32_t member = pixvane_find_member("Lightness");
        call("Lightness", member, to_value(nRedVal), to_value(nGreenVal), to_value(nBlueVal));
    }
    /// Warms (above 0) or cools the colours, in percent.
    /// nVal: integer, -100 to 100, slider -100 to 100, default 10.
    void Temperature(std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Temperature");
        call("Temperature", member, to_value(nVal));
    }
    /// Adds random noise: type 0 the same to all channels, others to each its own.
    /// nType: integer, slider 0 to 1, default 0.
    /// nVal: integer, slider 0 to 255, default 30.
    void Noise(std::int32_t nType, std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Noise");
        call("Noise", member, to_value(nType), to_value(nVal));
    }
    /// Turns the picture into its negative.
    void Invert() {
        static const std::int32_t member = pixvane_find_member("Invert");
        call("Invert", member);
    }
    /// Two colours: the first where the mean of the channels is above the level.
    /// nLevel: integer, slider 0 to 255, default 127.
    /// Color1: color, default 0xFFFFFF.
    /// Color2: color, default 0x000000.
    void Monochrome(std::int32_t nLevel, std::uint32_t Color1, std::uint32_t Color2) {
        static const std::int32_t member = pixvane_find_member("Monochrome");
        call("Monochrome", member, to_value(nLevel), pixvane_color(Color1), pixvane_color(Color2));
    }
    /// Tones the picture by a colour.
    /// R: integer, 0 to 255, slider 0 to 255, default 160.
    /// G: integer, 0 to 255, slider 0 to 255, default 133.
    /// B: integer, 0 to 255, slider 0 to 255, default 107.
    void Hue(std::int32_t R, std::int32_t G, std::int32_t B) {
        static const std::int32_t member = pixvane_find_member("Hue");
        call("Hue", member, to_value(R), to_value(G), to_value(B));
    }
    /// Tones the picture brown like an old photograph.
    void Sepia() {
        static const std::int32_t member = pixvane_find_member("Sepia");
        call("Sepia", member);
    }
    /// Grey in a number of steps.
    /// Colors: integer, 2 to 256, slider 2 to 256, default 4.
    void BWLevels(std::int32_t Colors) {
        static const std::int32_t member = pixvane_find_member("BWLevels");
        call("BWLevels", member, to_value(Colors));
    }
    /// Sets the levels of each channel from its histogram.
    void Autolevels() {
        static const std::int32_t member = pixvane_find_member("Autolevels");
        call("Autolevels", member);
    }
    /// Sets common levels from the histogram of all channels.
    void Autocontrast() {
        static const std::int32_t member = pixvane_find_member("Autocontrast");
        call("Autocontrast", member);
    }
    /// Gamma curve: below 1 brightens, above 1 darkens.
    /// Level: double, at least 0.02, slider 0.1 to 5, default 0.8.
    void Gamma(double Level) {
        static const std::int32_t member = pixvane_find_member("Gamma");
        call("Gamma", member, to_value(Level));
    }

    // ---- Blur and sharpen ----

    /// Mean over a square around each pixel.
    /// nVal: integer, 1 to 16384, slider 1 to 50, default 3.
    void Blur(std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Blur");
        call("Blur", member, to_value(nVal));
    }
    /// Mean over a square whose centre has a weight of its own; black for radii below 0.
    /// nAverage: integer, slider -20 to 20, default 1.
    /// nVal: integer, -8 to 16384, slider 0 to 50, default 2.
    void Average(std::int32_t nAverage, std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Average");
        call("Average", member, to_value(nAverage), to_value(nVal));
    }
    /// Blurs flat areas and keeps those whose range is above the level.
    /// nVal: integer, 1 to 16384, slider 1 to 50, default 2.
    /// Level: integer, slider 0 to 255, default 30.
    void SmartBlur(std::int32_t nVal, std::int32_t Level) {
        static const std::int32_t member = pixvane_find_member("SmartBlur");
        call("SmartBlur", member, to_value(nVal), to_value(Level));
    }
    /// Blur with weights that fall with the distance, the steeper the larger B.
    /// nVal: integer, 1 to 16384, slider 1 to 50, default 5.
    /// B: integer, at least 1, slider 1 to 100, default 1.
    void GaussianBlur(std::int32_t nVal, std::int32_t B) {
        static const std::int32_t member = pixvane_find_member("GaussianBlur");
        call("GaussianBlur", member, to_value(nVal), to_value(B));
    }
    /// Sharpens against the diagonal neighbours.
    void Sharpen() {
        static const std::int32_t member = pixvane_find_member("Sharpen");
        call("Sharpen", member);
    }
    /// Sharpens where the range of the neighbours is at least the level.
    /// Level: integer, slider 0 to 255, default 30.
    void SharpenEdge(std::int32_t Level) {
        static const std::int32_t member = pixvane_find_member("SharpenEdge");
        call("SharpenEdge", member, to_value(Level));
    }
    /// Applies a kernel of 3 x 3 or 5 x 5 weights, column by column.
    void UserEffect(View<std::int32_t> ppArray) {
        static const std::int32_t member = pixvane_find_member("UserEffect");
        call("UserEffect", member, to_value(ppArray));
    }

    // ---- Edges ----

    /// Light edges on black, by four neighbours.
    void Laplas() {
        static const std::int32_t member = pixvane_find_member("Laplas");
        call("Laplas", member);
    }
    /// Light edges on black, by eight neighbours.
    void Contour() {
        static const std::int32_t member = pixvane_find_member("Contour");
        call("Contour", member);
    }
    /// Gradient: 0 right less left, 1 left less right, 2 bottom less top, 3 top less bottom.
    /// nType: integer, slider 0 to 3, default 0.
    void Sobel(std::int32_t nType) {
        static const std::int32_t member = pixvane_find_member("Sobel");
        call("Sobel", member, to_value(nType));
    }

    // ---- Surface ----

    /// Grey relief of the difference to a neighbour, in one of eight directions.
    /// nValue: integer, -10 to 10, slider -10 to 10, default 1.
    /// Direction: integer, slider 0 to 7, default 3.
    void Emboss(std::int32_t nValue, std::int32_t Direction) {
        static const std::int32_t member = pixvane_find_member("Emboss");
        call("Emboss", member, to_value(nValue), to_value(Direction));
    }
    /// Lights the picture from one side, turned by 45 degrees for each step.
    /// nVal: integer, slider 0 to 7, default 1.
    void Relief(std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Relief");
        call("Relief", member, to_value(nVal));
    }
    /// Tiles of 2 nVal + 1 pixels: type 0 of their middle's colour, others of their mean.
    /// nType: integer, slider 0 to 1, default 1.
    /// nVal: integer, at least 1, slider 1 to 100, default 5.
    void Mosaic(std::int32_t nType, std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Mosaic");
        call("Mosaic", member, to_value(nType), to_value(nVal));
    }
    /// Draws a weave of short random strokes, black and white, of less than this alpha.
    /// Val: integer, at least 1, slider 1 to 256, default 40.
    void Textile(std::int32_t Val) {
        static const std::int32_t member = pixvane_find_member("Textile");
        call("Textile", member, to_value(Val));
    }

    // ---- Noise and ranks ----

    /// The least value of each channel within the radius.
    /// nVal: integer, 0 to 16384, slider 0 to 50, default 2.
    void Minimal(std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Minimal");
        call("Minimal", member, to_value(nVal));
    }
    /// The largest value of each channel within the radius.
    /// nVal: integer, 0 to 16384, slider 0 to 50, default 2.
    void Maximal(std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Maximal");
        call("Maximal", member, to_value(nVal));
    }
    /// The middle value of each channel within the radius.
    /// nVal: integer, 0 to 16384, slider 0 to 50, default 2.
    void Median(std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Median");
        call("Median", member, to_value(nVal));
    }
    /// Replaces channels that stand out by their mean within the radius.
    /// nVal: integer, 1 to 16384, slider 1 to 7, default 1.
    void AntiNoise(std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("AntiNoise");
        call("AntiNoise", member, to_value(nVal));
    }
    /// Takes each pixel from a random place within the radius.
    /// nVal: integer, at least 1, slider 1 to 50, default 3.
    void Diffuse(std::int32_t nVal) {
        static const std::int32_t member = pixvane_find_member("Diffuse");
        call("Diffuse", member, to_value(nVal));
    }

    // ---- Focus ----

    /// Blurs in nVal passes outside of R1 around a point, fully from R1 + R2 on.
    /// nVal: integer, at least 1, slider 1 to 10, default 3.
    /// R1: integer, at least 1, slider 1 to 2000, default 100.
    /// R2: integer, at least 1, slider 1 to 2000, default 200.
    /// X: integer, slider 0 to 8000, default 400.
    /// Y: integer, slider 0 to 8000, default 300.
    void SoftFocus(std::int32_t nVal, std::int32_t R1, std::int32_t R2, std::int32_t X, std::int32_t Y) {
        static const std::int32_t member = pixvane_find_member("SoftFocus");
        call("SoftFocus", member, to_value(nVal), to_value(R1), to_value(R2), to_value(X), to_value(Y));
    }
    /// Keeps colour within R1 around a point and fades to grey over the next R2 pixels.
    /// R1: integer, slider 0 to 2000, default 100.
    /// R2: integer, slider 0 to 2000, default 200.
    /// X: integer, slider 0 to 8000, default 400.
    /// Y: integer, slider 0 to 8000, default 300.
    void FocalBW(std::int32_t R1, std::int32_t R2, std::int32_t X, std::int32_t Y) {
        static const std::int32_t member = pixvane_find_member("FocalBW");
        call("FocalBW", member, to_value(R1), to_value(R2), to_value(X), to_value(Y));
    }

    // ---- Canvas ----

    /// Fills the picture with BitmapBackColor.
    void ClearImage() {
        static const std::int32_t member = pixvane_find_member("ClearImage");
        call("ClearImage", member);
    }
    /// Cuts or enlarges the canvas on the right and at the bottom, without scaling.
    /// Width: integer, 1 to 65535, slider 1 to 8000, default 800.
    /// Height: integer, 1 to 65535, slider 1 to 8000, default 600.
    void SetNewSize(std::int32_t Width, std::int32_t Height) {
        static const std::int32_t member = pixvane_find_member("SetNewSize");
        call("SetNewSize", member, to_value(Width), to_value(Height));
    }
    /// Turns clockwise by nType quarter turns; from 4 on, then flips left to right.
    /// nType: integer, 0 to 7, slider 0 to 7, default 1.
    void RotateFlip(std::int32_t nType) {
        static const std::int32_t member = pixvane_find_member("RotateFlip");
        call("RotateFlip", member, to_value(nType));
    }
    /// Scales by a factor for each side; below 0.5 by the mean of what a pixel covers.
    /// ScaleX: double, 1e-05 to 65535, slider 0.05 to 4, default 0.5.
    /// ScaleY: double, 1e-05 to 65535, slider 0.05 to 4, default 0.5.
    void ScaleImage(double ScaleX, double ScaleY) {
        static const std::int32_t member = pixvane_find_member("ScaleImage");
        call("ScaleImage", member, to_value(ScaleX), to_value(ScaleY));
    }
    /// Adds a border of one colour.
    /// Width: integer, 1 to 65535, slider 1 to 200, default 16.
    /// Color: color, default 0xFFFFFF.
    void AddSimpleBorder(std::int32_t Width, std::uint32_t Color) {
        static const std::int32_t member = pixvane_find_member("AddSimpleBorder");
        call("AddSimpleBorder", member, to_value(Width), pixvane_color(Color));
    }
    /// Adds a border of a gradient: Style 0 to the right, 1 down, 2 and 3 along the diagonals.
    /// Width: integer, 1 to 65535, slider 1 to 200, default 16.
    /// Color1: color, default 0xFFFFFF.
    /// Color2: color, default 0x804000.
    /// Style: integer, slider 0 to 3, default 2.
    void AddGradientBorder(std::int32_t Width, std::uint32_t Color1, std::uint32_t Color2,
                           std::int32_t Style) {
        static const std::int32_t member = pixvane_find_member("AddGradientBorder");
        call("AddGradientBorder", member, to_value(Width), pixvane_color(Color1), pixvane_color(Color2),
             to_value(Style));
    }

    // ---- View ----

    /// Window pixels for each pixel of the picture.
    double Zoom() {
        static const std::int32_t member = pixvane_find_member("Zoom");
        return call("Zoom", member).d;
    }
    /// Zooms in by one tenth, from below 8 only.
    void ZoomIn() {
        static const std::int32_t member = pixvane_find_member("ZoomIn");
        call("ZoomIn", member);
    }
    /// Zooms out by the same step, from above 0.1 only.
    void ZoomOut() {
        static const std::int32_t member = pixvane_find_member("ZoomOut");
        call("ZoomOut", member);
    }
    /// Zooms to 1.0 (to 0.1 from below it, to 16.0 from above it).
    void ActialSize() {
        static const std::int32_t member = pixvane_find_member("ActialSize");
        call("ActialSize", member);
    }
    /// Zooms so that the picture fits the window.
    void ZoomToFit() {
        static const std::int32_t member = pixvane_find_member("ZoomToFit");
        call("ZoomToFit", member);
    }
    /// Whether a resize of the window fits the picture anew.
    bool AutoResize() {
        static const std::int32_t member = pixvane_find_member("AutoResize");
        return call("AutoResize", member).i != 0;
    }
    /// Whether a resize of the window fits the picture anew.
    /// Value: boolean, default false.
    void put_AutoResize(bool Value) {
        static const std::int32_t member = pixvane_find_member("AutoResize");
        call("AutoResize", member, to_value(Value));
    }
    /// Colour around the picture.
    std::uint32_t BackColor1() {
        static const std::int32_t member = pixvane_find_member("BackColor1");
        return static_cast<std::uint32_t>(call("BackColor1", member).i);
    }
    /// Colour around the picture.
    /// Value: color, default 0x8B0000.
    void put_BackColor1(std::uint32_t Value) {
        static const std::int32_t member = pixvane_find_member("BackColor1");
        call("BackColor1", member, pixvane_color(Value));
    }
    /// Colour of the frame around the picture.
    std::uint32_t FrameColor() {
        static const std::int32_t member = pixvane_find_member("FrameColor");
        return static_cast<std::uint32_t>(call("FrameColor", member).i);
    }
    /// Colour of the frame around the picture.
    /// Value: color, default 0xD3D3D3.
    void put_FrameColor(std::uint32_t Value) {
        static const std::int32_t member = pixvane_find_member("FrameColor");
        call("FrameColor", member, pixvane_color(Value));
    }
    /// Whether a frame is drawn around the picture.
    bool ShowBorder() {
        static const std::int32_t member = pixvane_find_member("ShowBorder");
        return call("ShowBorder", member).i != 0;
    }
    /// Whether a frame is drawn around the picture.
    /// Value: boolean, default true.
    void put_ShowBorder(bool Value) {
        static const std::int32_t member = pixvane_find_member("ShowBorder");
        call("ShowBorder", member, to_value(Value));
    }
    /// Whether name and size of the folder's current file are shown.
    bool ShowDetails() {
        static const std::int32_t member = pixvane_find_member("ShowDetails");
        return call("ShowDetails", member).i != 0;
    }
    /// Whether name and size of the folder's current file are shown.
    /// Value: boolean, default false.
    void put_ShowDetails(bool Value) {
        static const std::int32_t member = pixvane_find_member("ShowDetails");
        call("ShowDetails", member, to_value(Value));
    }
    /// Whether an overview is shown while the picture overflows the window.
    bool ScrollWindowVisible() {
        static const std::int32_t member = pixvane_find_member("ScrollWindowVisible");
        return call("ScrollWindowVisible", member).i != 0;
    }
    /// Whether an overview is shown while the picture overflows the window.
    /// Value: boolean, default false.
    void put_ScrollWindowVisible(bool Value) {
        static const std::int32_t member = pixvane_find_member("ScrollWindowVisible");
        call("ScrollWindowVisible", member, to_value(Value));
    }
    /// Colour of the overview, which is half transparent.
    std::uint32_t ScrollWindowColor() {
        static const std::int32_t member = pixvane_find_member("ScrollWindowColor");
        return static_cast<std::uint32_t>(call("ScrollWindowColor", member).i);
    }
    /// Colour of the overview, which is half transparent.
    /// Value: color, default 0x505050.
    void put_ScrollWindowColor(std::uint32_t Value) {
        static const std::int32_t member = pixvane_find_member("ScrollWindowColor");
        call("ScrollWindowColor", member, pixvane_color(Value));
    }
    /// Suspends repainting until EndUpdate.
    void BeginUpdate() {
        static const std::int32_t member = pixvane_find_member("BeginUpdate");
        call("BeginUpdate", member);
    }
    /// Repaints, and goes on repainting; one ends any number of BeginUpdate.
    void EndUpdate() {
        static const std::int32_t member = pixvane_find_member("EndUpdate");
        call("EndUpdate", member);
    }

    // ---- Mouse ----

    /// Mode of the mouse: 0 none, 1 to 26 a tool; a put resets every tool.
    std::int32_t PaintStatus() {
        static const std::int32_t member = pixvane_find_member("PaintStatus");
        return call("PaintStatus", member).i;
    }
    /// Mode of the mouse: 0 none, 1 to 26 a tool; a put resets every tool.
    /// Value: integer, slider 0 to 26, default 0.
    void put_PaintStatus(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("PaintStatus");
        call("PaintStatus", member, to_value(Value));
    }
    /// A button (0 left, 1 middle, 2 right) was pressed at a point of the picture.
    std::int32_t on_OnMouseDown(std::function<void(std::int32_t Button, std::int32_t X,
                                                   std::int32_t Y)> handler) {
        return on("OnMouseDown", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(values[0].i, values[1].i, values[2].i);
        });
    }
    /// A button was released at a point of the picture.
    std::int32_t on_OnMouseUp(std::function<void(std::int32_t Button, std::int32_t X,
                                                 std::int32_t Y)> handler) {
        return on("OnMouseUp", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(values[0].i, values[1].i, values[2].i);
        });
    }
    /// The pointer moved, with a button held or -1, to a point of the picture.
    std::int32_t on_OnMouseMove(std::function<void(std::int32_t Button, std::int32_t X,
                                                   std::int32_t Y)> handler) {
        return on("OnMouseMove", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(values[0].i, values[1].i, values[2].i);
        });
    }
    /// A button was double-clicked at a point of the picture.
    std::int32_t on_OnDblClick(std::function<void(std::int32_t Button, std::int32_t X,
                                                  std::int32_t Y)> handler) {
        return on("OnDblClick", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(values[0].i, values[1].i, values[2].i);
        });
    }
    /// A track point was picked in mode 21.
    std::int32_t on_OnTrackPointMouseDown(std::function<void(std::int32_t X, std::int32_t Y)> handler) {
        return on("OnTrackPointMouseDown", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(values[0].i, values[1].i);
        });
    }
    /// The track point that is held was dragged.
    std::int32_t on_OnTrackPointMouseMove(std::function<void(std::int32_t X, std::int32_t Y)> handler) {
        return on("OnTrackPointMouseMove", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(values[0].i, values[1].i);
        });
    }
    /// The track point that was held is let go.
    std::int32_t on_OnTrackPointMouseUp(std::function<void(std::int32_t X, std::int32_t Y)> handler) {
        return on("OnTrackPointMouseUp", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(values[0].i, values[1].i);
        });
    }
    /// APPLY was pressed in mode 20: the picture is rotated.
    std::int32_t on_OnHitApplyRotate(std::function<void()> handler) {
        return on("OnHitApplyRotate", [handler = std::move(handler)](const pixvane_value*, std::size_t) {
            handler();
        });
    }
    /// CANCEL was pressed in mode 20: the picture stays as it is.
    std::int32_t on_OnHitCancelRotate(std::function<void()> handler) {
        return on("OnHitCancelRotate", [handler = std::move(handler)](const pixvane_value*, std::size_t) {
            handler();
        });
    }
    /// The angle of rotation was dragged in mode 20.
    std::int32_t on_OnRotateAt(std::function<void(double Angle)> handler) {
        return on("OnRotateAt", [handler = std::move(handler)](const pixvane_value* values, std::size_t) {
            handler(values[0].d);
        });
    }
    /// Red eyes were corrected in mode 19.
    std::int32_t on_OnRedEyeCorrect(std::function<void()> handler) {
        return on("OnRedEyeCorrect", [handler = std::move(handler)](const pixvane_value*, std::size_t) {
            handler();
        });
    }
    /// Another colour was picked in mode 26.
    std::int32_t on_OnColorChanged(std::function<void()> handler) {
        return on("OnColorChanged", [handler = std::move(handler)](const pixvane_value*, std::size_t) {
            handler();
        });
    }
    /// The close box of the overview was pressed; hiding it is up to the host.
    std::int32_t on_OnHitCloseScrollWindow(std::function<void()> handler) {
        return on("OnHitCloseScrollWindow", [handler = std::move(handler)](const pixvane_value*, std::size_t) {
            handler();
        });
    }

    // ---- Live preview ----

    /// Opens a preview; any edit, undo, new document or mode ends it again.
    void BeginPreview() {
        static const std::int32_t member = pixvane_find_member("BeginPreview");
        call("BeginPreview", member);
    }
    /// Shows what a command would make of the picture, until the next one is shown.
    template <class... Values>
    void Preview(std::string_view Name, const Values&... Arguments) {
        static const std::int32_t member = pixvane_find_member("Preview");
        call("Preview", member, to_value(Name), to_value(Arguments)...);
    }
    /// Ends the preview; with Apply the command shown last is called.
    void EndPreview(bool Apply) {
        static const std::int32_t member = pixvane_find_member("EndPreview");
        call("EndPreview", member, to_value(Apply));
    }

    // ---- Pen ----

    /// Width of outlines in pixels.
    std::int32_t PenWidth() {
        static const std::int32_t member = pixvane_find_member("PenWidth");
        return call("PenWidth", member).i;
    }
    /// Width of outlines in pixels.
    /// Value: integer, 1 to 8, slider 1 to 8, default 1.
    void put_PenWidth(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("PenWidth");
        call("PenWidth", member, to_value(Value));
    }
    /// Outlines: 0 solid, 1 to 4 dashed, others none.
    std::int32_t PenStyle() {
        static const std::int32_t member = pixvane_find_member("PenStyle");
        return call("PenStyle", member).i;
    }
    /// Outlines: 0 solid, 1 to 4 dashed, others none.
    /// Value: integer, slider 0 to 4, default 0.
    void put_PenStyle(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("PenStyle");
        call("PenStyle", member, to_value(Value));
    }
    /// Colour of outlines; keeps their alpha.
    std::uint32_t PenColor() {
        static const std::int32_t member = pixvane_find_member("PenColor");
        return static_cast<std::uint32_t>(call("PenColor", member).i);
    }
    /// Colour of outlines; keeps their alpha.
    /// Value: color, default 0x000000.
    void put_PenColor(std::uint32_t Value) {
        static const std::int32_t member = pixvane_find_member("PenColor");
        call("PenColor", member, pixvane_color(Value));
    }
    /// Alpha of outlines: 0 invisible, 255 opaque.
    std::int32_t PenTransparency() {
        static const std::int32_t member = pixvane_find_member("PenTransparency");
        return call("PenTransparency", member).i;
    }
    /// Alpha of outlines: 0 invisible, 255 opaque.
    /// Value: integer, 0 to 255, slider 0 to 255, default 255.
    void put_PenTransparency(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("PenTransparency");
        call("PenTransparency", member, to_value(Value));
    }

    // ---- Tools ----

    /// 1: lines and shapes are smooth; others: their pixels are all or none.
    std::int32_t SmoothMode() {
        static const std::int32_t member = pixvane_find_member("SmoothMode");
        return call("SmoothMode", member).i;
    }
    /// 1: lines and shapes are smooth; others: their pixels are all or none.
    /// Value: integer, slider 0 to 2, default 0.
    void put_SmoothMode(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("SmoothMode");
        call("SmoothMode", member, to_value(Value));
    }
    /// Radius of the spray in pixels.
    std::int32_t SprayRadius() {
        static const std::int32_t member = pixvane_find_member("SprayRadius");
        return call("SprayRadius", member).i;
    }
    /// Radius of the spray in pixels.
    /// Value: integer, 8 to 50, slider 8 to 50, default 20.
    void put_SprayRadius(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("SprayRadius");
        call("SprayRadius", member, to_value(Value));
    }
    /// Size of the brush.
    std::int32_t ToolBrushSize() {
        static const std::int32_t member = pixvane_find_member("ToolBrushSize");
        return call("ToolBrushSize", member).i;
    }
    /// Size of the brush.
    /// Value: integer, 1 to 11, slider 1 to 11, default 5.
    void put_ToolBrushSize(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("ToolBrushSize");
        call("ToolBrushSize", member, to_value(Value));
    }
    /// Tip of the brush.
    std::int32_t ToolBrushStyle() {
        static const std::int32_t member = pixvane_find_member("ToolBrushStyle");
        return call("ToolBrushStyle", member).i;
    }
    /// Tip of the brush.
    /// Value: integer, 0 to 5, slider 0 to 5, default 0.
    void put_ToolBrushStyle(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("ToolBrushStyle");
        call("ToolBrushStyle", member, to_value(Value));
    }
    /// Size of the eraser.
    std::int32_t EraserSize() {
        static const std::int32_t member = pixvane_find_member("EraserSize");
        return call("EraserSize", member).i;
    }
    /// Size of the eraser.
    /// Value: integer, 1 to 11, slider 1 to 11, default 5.
    void put_EraserSize(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("EraserSize");
        call("EraserSize", member, to_value(Value));
    }

    // ---- Font ----

    /// Family of texts by its number, below FontCount.
    std::int32_t FontIndex() {
        static const std::int32_t member = pixvane_find_member("FontIndex");
        return call("FontIndex", member).i;
    }
    /// Family of texts by its number, below FontCount.
    /// Value: integer, at least 0.
    void put_FontIndex(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("FontIndex");
        call("FontIndex", member, to_value(Value));
    }
    /// Whether texts are italic.
    bool FontStyleItalic() {
        static const std::int32_t member = pixvane_find_member("FontStyleItalic");
        return call("FontStyleItalic", member).i != 0;
    }
    /// Whether texts are italic.
    /// Value: boolean, default false.
    void put_FontStyleItalic(bool Value) {
        static const std::int32_t member = pixvane_find_member("FontStyleItalic");
        call("FontStyleItalic", member, to_value(Value));
    }
    /// Whether texts are bold.
    bool FontStyleBold() {
        static const std::int32_t member = pixvane_find_member("FontStyleBold");
        return call("FontStyleBold", member).i != 0;
    }
    /// Whether texts are bold.
    /// Value: boolean, default false.
    void put_FontStyleBold(bool Value) {
        static const std::int32_t member = pixvane_find_member("FontStyleBold");
        call("FontStyleBold", member, to_value(Value));
    }
    /// Whether texts are underlined.
    bool FontStyleUnderline() {
        static const std::int32_t member = pixvane_find_member("FontStyleUnderline");
        return call("FontStyleUnderline", member).i != 0;
    }
    /// Whether texts are underlined.
    /// Value: boolean, default false.
    void put_FontStyleUnderline(bool Value) {
        static const std::int32_t member = pixvane_find_member("FontStyleUnderline");
        call("FontStyleUnderline", member, to_value(Value));
    }
    /// Whether texts are struck out.
    bool FontStyleStrikeout() {
        static const std::int32_t member = pixvane_find_member("FontStyleStrikeout");
        return call("FontStyleStrikeout", member).i != 0;
    }
    /// Whether texts are struck out.
    /// Value: boolean, default false.
    void put_FontStyleStrikeout(bool Value) {
        static const std::int32_t member = pixvane_find_member("FontStyleStrikeout");
        call("FontStyleStrikeout", member, to_value(Value));
    }
    /// Height of texts in pixels.
    std::int32_t FontSize() {
        static const std::int32_t member = pixvane_find_member("FontSize");
        return call("FontSize", member).i;
    }
    /// Height of texts in pixels.
    /// Value: integer, 6 to 255, slider 6 to 255, default 16.
    void put_FontSize(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("FontSize");
        call("FontSize", member, to_value(Value));
    }
    /// How many families of fonts the machine has.
    std::int32_t FontCount() {
        static const std::int32_t member = pixvane_find_member("FontCount");
        return call("FontCount", member).i;
    }
    /// Name of a family; empty if there is none of this number.
    /// Index: integer, at least 0.
    std::string FontName(std::int32_t Index) {
        static const std::int32_t member = pixvane_find_member("FontName");
        const pixvane_value result = call("FontName", member, to_value(Index));
        return take<std::string>("FontName", result);
    }
    /// Chooses a family by its name; nothing if there is none.
    void SetupFontByName(std::string_view Name) {
        static const std::int32_t member = pixvane_find_member("SetupFontByName");
        call("SetupFontByName", member, to_value(Name));
    }

    // ---- Brush ----

    /// Fillings: 0 solid, 1 gradient, 2 hatch, 3 texture, from 4 on none.
    std::int32_t BrushStyle() {
        static const std::int32_t member = pixvane_find_member("BrushStyle");
        return call("BrushStyle", member).i;
    }
    /// Fillings: 0 solid, 1 gradient, 2 hatch, 3 texture, from 4 on none.
    /// Value: integer, at least 0, slider 0 to 3, default 0.
    void put_BrushStyle(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("BrushStyle");
        call("BrushStyle", member, to_value(Value));
    }
    /// Pattern of a hatch.
    std::int32_t BrushHatchStyle() {
        static const std::int32_t member = pixvane_find_member("BrushHatchStyle");
        return call("BrushHatchStyle", member).i;
    }
    /// Pattern of a hatch.
    /// Value: integer, 0 to 52, slider 0 to 52, default 0.
    void put_BrushHatchStyle(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("BrushHatchStyle");
        call("BrushHatchStyle", member, to_value(Value));
    }
    /// Tiles of a texture: 0 alike, 1 every other one flipped in x, 2 in y, 3 in both.
    std::int32_t BrushTextureStyle() {
        static const std::int32_t member = pixvane_find_member("BrushTextureStyle");
        return call("BrushTextureStyle", member).i;
    }
    /// Tiles of a texture: 0 alike, 1 every other one flipped in x, 2 in y, 3 in both.
    /// Value: integer, 0 to 3, slider 0 to 3, default 0.
    void put_BrushTextureStyle(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("BrushTextureStyle");
        call("BrushTextureStyle", member, to_value(Value));
    }
    /// Gradients: 0 to the right, 1 down, 2 and 3 along the diagonals.
    std::int32_t BrushGradientStyle() {
        static const std::int32_t member = pixvane_find_member("BrushGradientStyle");
        return call("BrushGradientStyle", member).i;
    }
    /// Gradients: 0 to the right, 1 down, 2 and 3 along the diagonals.
    /// Value: integer, 0 to 3, slider 0 to 3, default 0.
    void put_BrushGradientStyle(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("BrushGradientStyle");
        call("BrushGradientStyle", member, to_value(Value));
    }
    /// Alpha of fillings: 0 invisible, 255 opaque.
    std::int32_t BrushTransparency() {
        static const std::int32_t member = pixvane_find_member("BrushTransparency");
        return call("BrushTransparency", member).i;
    }
    /// Alpha of fillings: 0 invisible, 255 opaque.
    /// Value: integer, 0 to 255, slider 0 to 255, default 255.
    void put_BrushTransparency(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("BrushTransparency");
        call("BrushTransparency", member, to_value(Value));
    }
    /// Picture file of the texture; one that can't be read changes nothing.
    std::string TextureFileName() {
        static const std::int32_t member = pixvane_find_member("TextureFileName");
        const pixvane_value result = call("TextureFileName", member);
        return take<std::string>("TextureFileName", result);
    }
    /// Picture file of the texture; one that can't be read changes nothing.
    void put_TextureFileName(std::string_view Value) {
        static const std::int32_t member = pixvane_find_member("TextureFileName");
        call("TextureFileName", member, to_value(Value));
    }
    /// Colour of fillings, start of a gradient, ground of a hatch.
    std::uint32_t BrushColor1() {
        static const std::int32_t member = pixvane_find_member("BrushColor1");
        return static_cast<std::uint32_t>(call("BrushColor1", member).i);
    }
    /// Colour of fillings, start of a gradient, ground of a hatch.
    /// Value: color, default 0xFFFFFF.
    void put_BrushColor1(std::uint32_t Value) {
        static const std::int32_t member = pixvane_find_member("BrushColor1");
        call("BrushColor1", member, pixvane_color(Value));
    }
    /// End of a gradient, lines of a hatch.
    std::uint32_t BrushColor2() {
        static const std::int32_t member = pixvane_find_member("BrushColor2");
        return static_cast<std::uint32_t>(call("BrushColor2", member).i);
    }
    /// End of a gradient, lines of a hatch.
    /// Value: color, default 0x000000.
    void put_BrushColor2(std::uint32_t Value) {
        static const std::int32_t member = pixvane_find_member("BrushColor2");
        call("BrushColor2", member, pixvane_color(Value));
    }

    // ---- Image stamp ----

    /// How a picture is stamped into the picture.
    std::int32_t ImageStyle() {
        static const std::int32_t member = pixvane_find_member("ImageStyle");
        return call("ImageStyle", member).i;
    }
    /// How a picture is stamped into the picture.
    /// Value: integer, 0 to 6, slider 0 to 6, default 0.
    void put_ImageStyle(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("ImageStyle");
        call("ImageStyle", member, to_value(Value));
    }
    /// First alpha of a stamped picture.
    std::int32_t ImageTransparency1() {
        static const std::int32_t member = pixvane_find_member("ImageTransparency1");
        return call("ImageTransparency1", member).i;
    }
    /// First alpha of a stamped picture.
    /// Value: integer, 0 to 255, slider 0 to 255, default 255.
    void put_ImageTransparency1(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("ImageTransparency1");
        call("ImageTransparency1", member, to_value(Value));
    }
    /// Second alpha of a stamped picture.
    std::int32_t ImageTransparency2() {
        static const std::int32_t member = pixvane_find_member("ImageTransparency2");
        return call("ImageTransparency2", member).i;
    }
    /// Second alpha of a stamped picture.
    /// Value: integer, 0 to 255, slider 0 to 255, default 255.
    void put_ImageTransparency2(std::int32_t Value) {
        static const std::int32_t member = pixvane_find_member("ImageTransparency2");
        call("ImageTransparency2", member, to_value(Value));
    }
    /// Colour that a stamped picture leaves out while UseImageMaskColor is on.
    std::uint32_t ImageMaskColor() {
        static const std::int32_t member = pixvane_find_member("ImageMaskColor");
        return static_cast<std::uint32_t>(call("ImageMaskColor", member).i);
    }
    /// Colour that a stamped picture leaves out while UseImageMaskColor is on.
    /// Value: color, default 0xFFFFFF.
    void put_ImageMaskColor(std::uint32_t Value) {
        static const std::int32_t member = pixvane_find_member("ImageMaskColor");
        call("ImageMaskColor", member, pixvane_color(Value));
    }
    /// Whether ImageMaskColor is left out.
    bool UseImageMaskColor() {
        static const std::int32_t member = pixvane_find_member("UseImageMaskColor");
        return call("UseImageMaskColor", member).i != 0;
    }
    /// Whether ImageMaskColor is left out.
    /// Value: boolean, default false.
    void put_UseImageMaskColor(bool Value) {
        static const std::int32_t member = pixvane_find_member("UseImageMaskColor");
        call("UseImageMaskColor", member, to_value(Value));
    }

    // ---- Macros ----

    /// Starts a macro with all drawing settings, and records what follows.
    void BeginMacros() {
        static const std::int32_t member = pixvane_find_member("BeginMacros");
        call("BeginMacros", member);
    }
    /// Ends the recording; the macro stays.
    void EndMacros() {
        static const std::int32_t member = pixvane_find_member("EndMacros");
        call("EndMacros", member);
    }
    /// Whether a macro is being recorded.
    bool Recording() {
        static const std::int32_t member = pixvane_find_member("Recording");
        return call("Recording", member).i != 0;
    }
    /// Saves the macro; false if it has no steps or can't be written.
    bool SaveMacros(std::string_view Path) {
        static const std::int32_t member = pixvane_find_member("SaveMacros");
        return call("SaveMacros", member, to_value(Path)).i != 0;
    }
    /// Loads a macro; false, and it is empty, if that fails.
    bool LoadMacros(std::string_view Path) {
        static const std::int32_t member = pixvane_find_member("LoadMacros");
        return call("LoadMacros", member, to_value(Path)).i != 0;
    }
    /// Replays the macro on the picture; drawing settings are afterwards as before.
    void PlayMacros() {
        static const std::int32_t member = pixvane_find_member("PlayMacros");
        call("PlayMacros", member);
    }
    // clang-format on
};

}  // namespace pixvane
