// The table's rows of documents: making, loading, saving, reading, history.
// SPDX-License-Identifier: MIT
#include "control/member_table.h"

namespace pixvane {

std::vector<Row> document_rows() {
    using C = CPixvane;
    const char* document = "Document";
    const char* files = "Files";
    const char* history = "History";
    const char* arrays = "Histograms and arrays";
    const Range sides{4, kMaxSide};
    return {
        method("NewImage", &C::NewImage, document, "Starts a new picture filled with BitmapBackColor.",
               {{.name = "Width", .slider = {4, 8000}, .initial = 800, .accepts = sides},
                {.name = "Height", .slider = {4, 8000}, .initial = 600, .accepts = sides}}),
        method("Empty", &C::Empty, document, "Drops the picture and its history."),
        property("IsEmpty", &C::IsEmpty, document, "Whether the control holds no picture."),
        property("ImageWidth", &C::ImageWidth, document, "Width of the picture in pixels, 0 when empty."),
        property("ImageHeight", &C::ImageHeight, document, "Height of the picture in pixels, 0 when empty."),
        property("FramesCount", &C::FramesCount, document,
                 "Frames or pages of the file that the picture came from, 0 when empty."),
        method("GetPixel", &C::GetPixel, document, "Colour of a pixel, 0 outside of the picture.",
               {{.name = "X"}, {.name = "Y"}}),
        property("BitmapBackColor", &C::BitmapBackColor, &C::put_BitmapBackColor, document,
                 "Colour of new, cleared and enlarged canvas.", {.name = "Value", .initial = 0xFFFFFF}),
        property("Picture", &C::Picture, &C::put_Picture, document,
                 "The picture as a BMP file of 24 bits over white; put takes any picture file."),

        method("LoadImage", &C::LoadImage, files,
               "Loads a picture file; false, and the control is empty, if it can't be read.",
               {{.name = "FileName"}}),
        method("SaveImage", &C::SaveImage, files,
               "Saves the picture: 0 BMP, 1 JPEG, 2 GIF, 3 TIFF, 4 PNG; false if it can't be written.",
               {{.name = "FileName"}, {.name = "nType", .slider = {0, 4}, .initial = 4, .accepts = {0, 4}}}),
        method("IsImageFile", &C::IsImageFile, files, "Whether a file is a picture that can be loaded.",
               {{.name = "FileName"}}),
        property("JpegQuality", &C::JpegQuality, &C::put_JpegQuality, files,
                 "Quality of saved JPEG files; limited to 0..100.",
                 {.name = "Value", .slider = {0, 100}, .initial = 90}),
        event<std::string_view>("OnDropFile", files, "A file was dropped on the control; nothing is loaded.",
                                {{.name = "FileName"}}),

        method("Undo", &C::Undo, history, "Goes back one step of the history."),
        method("Redo", &C::Redo, history, "Goes forward again to a step that was undone."),
        property("UndoEnable", &C::UndoEnable, history, "Whether Undo would go back."),
        property("RedoEnable", &C::RedoEnable, history, "Whether Redo would go forward."),
        property("HistoryStates", &C::HistoryStates, &C::put_HistoryStates, history,
                 "How many states are kept, the current one too; a put drops what can be redone.",
                 {.name = "Value", .slider = {2, 16}, .initial = 16, .accepts = {2, 16}}),
        property("Modified", &C::Modified, history,
                 "Whether the picture was edited since it was made, loaded or saved."),

        method("GetRHistogram", &C::GetRHistogram, arrays,
               "Counts of the 256 values of red; null when empty."),
        method("GetGHistogram", &C::GetGHistogram, arrays,
               "Counts of the 256 values of green; null when empty."),
        method("GetBHistogram", &C::GetBHistogram, arrays,
               "Counts of the 256 values of blue; null when empty."),
        method("GetLHistogram", &C::GetLHistogram, arrays,
               "Counts of the 256 values of luminance; null when empty."),
        method("GetImageArray", &C::GetImageArray, arrays,
               "The pixels as bytes B, G, R, A, rows top first; null when empty."),
        method("LoadFromImageArray", &C::LoadFromImageArray, arrays,
               "Makes pixels the picture: bytes B, G, R, A, rows top first, from 2 x 2 up.",
               {{.name = "pArray"},
                {.name = "Width", .accepts = {2, kMaxSide}},
                {.name = "Height", .accepts = {2, kMaxSide}}}),
    };
}

}  // namespace pixvane
