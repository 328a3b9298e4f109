// Each member of the control in Qt's terms. Written by tools/write_bindings.py; do not edit.
// SPDX-License-Identifier: MIT
#include "pixvane_members.h"

#include "control_link.h"
#include "qt_values.h"

using pixvane::Argument;
using pixvane::arguments_of;
using pixvane::call_member;
using pixvane::Reply;

// Lines are broken where the program that writes them breaks them.
// clang-format off

PixvaneMembers::PixvaneMembers(QWidget* parent) : QWidget(parent), link_(new pixvane::ControlLink(*this)) { listen(); }

PixvaneMembers::~PixvaneMembers() { link_->abandon(); }

void PixvaneMembers::listen() {
    link_->listen("OnDropFile", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnDropFile(Reply(arguments[0]).text());
    });
    link_->listen("OnMouseDown", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnMouseDown(Reply(arguments[0]).integer(), Reply(arguments[1]).integer(),
                                   Reply(arguments[2]).integer());
    });
    link_->listen("OnMouseUp", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnMouseUp(Reply(arguments[0]).integer(), Reply(arguments[1]).integer(),
                                 Reply(arguments[2]).integer());
    });
    link_->listen("OnMouseMove", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnMouseMove(Reply(arguments[0]).integer(), Reply(arguments[1]).integer(),
                                   Reply(arguments[2]).integer());
    });
    link_->listen("OnDblClick", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnDblClick(Reply(arguments[0]).integer(), Reply(arguments[1]).integer(),
                                  Reply(arguments[2]).integer());
    });
    link_->listen("OnTrackPointMouseDown", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnTrackPointMouseDown(Reply(arguments[0]).integer(), Reply(arguments[1]).integer());
    });
    link_->listen("OnTrackPointMouseMove", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnTrackPointMouseMove(Reply(arguments[0]).integer(), Reply(arguments[1]).integer());
    });
    link_->listen("OnTrackPointMouseUp", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnTrackPointMouseUp(Reply(arguments[0]).integer(), Reply(arguments[1]).integer());
    });
    link_->listen("OnHitApplyRotate", [](PixvaneMembers& members, const pixvane_value*) {
        Q_EMIT members.OnHitApplyRotate();
    });
    link_->listen("OnHitCancelRotate", [](PixvaneMembers& members, const pixvane_value*) {
        Q_EMIT members.OnHitCancelRotate();
    });
    link_->listen("OnRotateAt", [](PixvaneMembers& members, const pixvane_value* arguments) {
        Q_EMIT members.OnRotateAt(Reply(arguments[0]).real());
    });
    link_->listen("OnRedEyeCorrect", [](PixvaneMembers& members, const pixvane_value*) {
        Q_EMIT members.OnRedEyeCorrect();
    });
    link_->listen("OnColorChanged", [](PixvaneMembers& members, const pixvane_value*) {
        Q_EMIT members.OnColorChanged();
    });
    link_->listen("OnHitCloseScrollWindow", [](PixvaneMembers& members, const pixvane_value*) {
        Q_EMIT members.OnHitCloseScrollWindow();
    });
}

bool PixvaneMembers::IsEmpty() const {
    return call_member(*link_, "IsEmpty", {}).truth();
}

int PixvaneMembers::ImageWidth() const {
    return call_member(*link_, "ImageWidth", {}).integer();
}

int PixvaneMembers::ImageHeight() const {
    return call_member(*link_, "ImageHeight", {}).integer();
}

int PixvaneMembers::FramesCount() const {
    return call_member(*link_, "FramesCount", {}).integer();
}

QColor PixvaneMembers::BitmapBackColor() const {
    return call_member(*link_, "BitmapBackColor", {}).color();
}

void PixvaneMembers::setBitmapBackColor(const QColor& Value) {
    call_member(*link_, "BitmapBackColor", {Argument(Value)});
}

QByteArray PixvaneMembers::Picture() const {
    return call_member(*link_, "Picture", {}).bytes();
}

void PixvaneMembers::setPicture(const QByteArray& Value) {
    call_member(*link_, "Picture", {Argument(Value)});
}

int PixvaneMembers::JpegQuality() const {
    return call_member(*link_, "JpegQuality", {}).integer();
}

void PixvaneMembers::setJpegQuality(int Value) {
    call_member(*link_, "JpegQuality", {Argument(Value)});
}

bool PixvaneMembers::UndoEnable() const {
    return call_member(*link_, "UndoEnable", {}).truth();
}

bool PixvaneMembers::RedoEnable() const {
    return call_member(*link_, "RedoEnable", {}).truth();
}

int PixvaneMembers::HistoryStates() const {
    return call_member(*link_, "HistoryStates", {}).integer();
}

void PixvaneMembers::setHistoryStates(int Value) {
    call_member(*link_, "HistoryStates", {Argument(Value)});
}

bool PixvaneMembers::Modified() const {
    return call_member(*link_, "Modified", {}).truth();
}

double PixvaneMembers::Zoom() const {
    return call_member(*link_, "Zoom", {}).real();
}

bool PixvaneMembers::AutoResize() const {
    return call_member(*link_, "AutoResize", {}).truth();
}

void PixvaneMembers::setAutoResize(bool Value) {
    call_member(*link_, "AutoResize", {Argument(Value)});
}

QColor PixvaneMembers::BackColor1() const {
    return call_member(*link_, "BackColor1", {}).color();
}

void PixvaneMembers::setBackColor1(const QColor& Value) {
    call_member(*link_, "BackColor1", {Argument(Value)});
}

QColor PixvaneMembers::FrameColor() const {
    return call_member(*link_, "FrameColor", {}).color();
}

void PixvaneMembers::setFrameColor(const QColor& Value) {
    call_member(*link_, "FrameColor", {Argument(Value)});
}

bool PixvaneMembers::ShowBorder() const {
    return call_member(*link_, "ShowBorder", {}).truth();
}

void PixvaneMembers::setShowBorder(bool Value) {
    call_member(*link_, "ShowBorder", {Argument(Value)});
}

bool PixvaneMembers::ShowDetails() const {
    return call_member(*link_, "ShowDetails", {}).truth();
}

void PixvaneMembers::setShowDetails(bool Value) {
    call_member(*link_, "ShowDetails", {Argument(Value)});
}

bool PixvaneMembers::ScrollWindowVisible() const {
    return call_member(*link_, "ScrollWindowVisible", {}).truth();
}

void PixvaneMembers::setScrollWindowVisible(bool Value) {
    call_member(*link_, "ScrollWindowVisible", {Argument(Value)});
}

QColor PixvaneMembers::ScrollWindowColor() const {
    return call_member(*link_, "ScrollWindowColor", {}).color();
}

void PixvaneMembers::setScrollWindowColor(const QColor& Value) {
    call_member(*link_, "ScrollWindowColor", {Argument(Value)});
}

int PixvaneMembers::PaintStatus() const {
    return call_member(*link_, "PaintStatus", {}).integer();
}

void PixvaneMembers::setPaintStatus(int Value) {
    call_member(*link_, "PaintStatus", {Argument(Value)});
}

int PixvaneMembers::PenWidth() const {
    return call_member(*link_, "PenWidth", {}).integer();
}

void PixvaneMembers::setPenWidth(int Value) {
    call_member(*link_, "PenWidth", {Argument(Value)});
}

int PixvaneMembers::PenStyle() const {
    return call_member(*link_, "PenStyle", {}).integer();
}

void PixvaneMembers::setPenStyle(int Value) {
    call_member(*link_, "PenStyle", {Argument(Value)});
}

QColor PixvaneMembers::PenColor() const {
    return call_member(*link_, "PenColor", {}).color();
}

void PixvaneMembers::setPenColor(const QColor& Value) {
    call_member(*link_, "PenColor", {Argument(Value)});
}

int PixvaneMembers::PenTransparency() const {
    return call_member(*link_, "PenTransparency", {}).integer();
}

void PixvaneMembers::setPenTransparency(int Value) {
    call_member(*link_, "PenTransparency", {Argument(Value)});
}

int PixvaneMembers::SmoothMode() const {
    return call_member(*link_, "SmoothMode", {}).integer();
}

void PixvaneMembers::setSmoothMode(int Value) {
    call_member(*link_, "SmoothMode", {Argument(Value)});
}

int PixvaneMembers::FontIndex() const {
    return call_member(*link_, "FontIndex", {}).integer();
}

void PixvaneMembers::setFontIndex(int Value) {
    call_member(*link_, "FontIndex", {Argument(Value)});
}

bool PixvaneMembers::FontStyleItalic() const {
    return call_member(*link_, "FontStyleItalic", {}).truth();
}

void PixvaneMembers::setFontStyleItalic(bool Value) {
    call_member(*link_, "FontStyleItalic", {Argument(Value)});
}

bool PixvaneMembers::FontStyleBold() const {
    return call_member(*link_, "FontStyleBold", {}).truth();
}

void PixvaneMembers::setFontStyleBold(bool Value) {
    call_member(*link_, "FontStyleBold", {Argument(Value)});
}

bool PixvaneMembers::FontStyleUnderline() const {
    return call_member(*link_, "FontStyleUnderline", {}).truth();
}

void PixvaneMembers::setFontStyleUnderline(bool Value) {
    call_member(*link_, "FontStyleUnderline", {Argument(Value)});
}

bool PixvaneMembers::FontStyleStrikeout() const {
    return call_member(*link_, "FontStyleStrikeout", {}).truth();
}

void PixvaneMembers::setFontStyleStrikeout(bool Value) {
    call_member(*link_, "FontStyleStrikeout", {Argument(Value)});
}

int PixvaneMembers::FontSize() const {
    return call_member(*link_, "FontSize", {}).integer();
}

void PixvaneMembers::setFontSize(int Value) {
    call_member(*link_, "FontSize", {Argument(Value)});
}

int PixvaneMembers::BrushStyle() const {
    return call_member(*link_, "BrushStyle", {}).integer();
}

void PixvaneMembers::setBrushStyle(int Value) {
    call_member(*link_, "BrushStyle", {Argument(Value)});
}

int PixvaneMembers::BrushHatchStyle() const {
    return call_member(*link_, "BrushHatchStyle", {}).integer();
}

void PixvaneMembers::setBrushHatchStyle(int Value) {
    call_member(*link_, "BrushHatchStyle", {Argument(Value)});
}

int PixvaneMembers::BrushTextureStyle() const {
    return call_member(*link_, "BrushTextureStyle", {}).integer();
}

void PixvaneMembers::setBrushTextureStyle(int Value) {
    call_member(*link_, "BrushTextureStyle", {Argument(Value)});
}

int PixvaneMembers::BrushGradientStyle() const {
    return call_member(*link_, "BrushGradientStyle", {}).integer();
}

void PixvaneMembers::setBrushGradientStyle(int Value) {
    call_member(*link_, "BrushGradientStyle", {Argument(Value)});
}

int PixvaneMembers::BrushTransparency() const {
    return call_member(*link_, "BrushTransparency", {}).integer();
}

void PixvaneMembers::setBrushTransparency(int Value) {
    call_member(*link_, "BrushTransparency", {Argument(Value)});
}

QString PixvaneMembers::TextureFileName() const {
    return call_member(*link_, "TextureFileName", {}).text();
}

void PixvaneMembers::setTextureFileName(const QString& Value) {
    call_member(*link_, "TextureFileName", {Argument(Value)});
}

int PixvaneMembers::SprayRadius() const {
    return call_member(*link_, "SprayRadius", {}).integer();
}

void PixvaneMembers::setSprayRadius(int Value) {
    call_member(*link_, "SprayRadius", {Argument(Value)});
}

int PixvaneMembers::ToolBrushSize() const {
    return call_member(*link_, "ToolBrushSize", {}).integer();
}

void PixvaneMembers::setToolBrushSize(int Value) {
    call_member(*link_, "ToolBrushSize", {Argument(Value)});
}

int PixvaneMembers::ToolBrushStyle() const {
    return call_member(*link_, "ToolBrushStyle", {}).integer();
}

void PixvaneMembers::setToolBrushStyle(int Value) {
    call_member(*link_, "ToolBrushStyle", {Argument(Value)});
}

int PixvaneMembers::EraserSize() const {
    return call_member(*link_, "EraserSize", {}).integer();
}

void PixvaneMembers::setEraserSize(int Value) {
    call_member(*link_, "EraserSize", {Argument(Value)});
}

int PixvaneMembers::ImageStyle() const {
    return call_member(*link_, "ImageStyle", {}).integer();
}

void PixvaneMembers::setImageStyle(int Value) {
    call_member(*link_, "ImageStyle", {Argument(Value)});
}

int PixvaneMembers::ImageTransparency1() const {
    return call_member(*link_, "ImageTransparency1", {}).integer();
}

void PixvaneMembers::setImageTransparency1(int Value) {
    call_member(*link_, "ImageTransparency1", {Argument(Value)});
}

int PixvaneMembers::ImageTransparency2() const {
    return call_member(*link_, "ImageTransparency2", {}).integer();
}

void PixvaneMembers::setImageTransparency2(int Value) {
    call_member(*link_, "ImageTransparency2", {Argument(Value)});
}

QColor PixvaneMembers::ImageMaskColor() const {
    return call_member(*link_, "ImageMaskColor", {}).color();
}

void PixvaneMembers::setImageMaskColor(const QColor& Value) {
    call_member(*link_, "ImageMaskColor", {Argument(Value)});
}

bool PixvaneMembers::UseImageMaskColor() const {
    return call_member(*link_, "UseImageMaskColor", {}).truth();
}

void PixvaneMembers::setUseImageMaskColor(bool Value) {
    call_member(*link_, "UseImageMaskColor", {Argument(Value)});
}

QColor PixvaneMembers::BrushColor1() const {
    return call_member(*link_, "BrushColor1", {}).color();
}

void PixvaneMembers::setBrushColor1(const QColor& Value) {
    call_member(*link_, "BrushColor1", {Argument(Value)});
}

QColor PixvaneMembers::BrushColor2() const {
    return call_member(*link_, "BrushColor2", {}).color();
}

void PixvaneMembers::setBrushColor2(const QColor& Value) {
    call_member(*link_, "BrushColor2", {Argument(Value)});
}

int PixvaneMembers::FontCount() const {
    return call_member(*link_, "FontCount", {}).integer();
}

bool PixvaneMembers::Recording() const {
    return call_member(*link_, "Recording", {}).truth();
}

void PixvaneMembers::NewImage(int Width, int Height) {
    call_member(*link_, "NewImage", {Argument(Width), Argument(Height)});
}

void PixvaneMembers::Empty() {
    call_member(*link_, "Empty", {});
}

QColor PixvaneMembers::GetPixel(int X, int Y) {
    return call_member(*link_, "GetPixel", {Argument(X), Argument(Y)}).color();
}

bool PixvaneMembers::LoadImage(const QString& FileName) {
    return call_member(*link_, "LoadImage", {Argument(FileName)}).truth();
}

bool PixvaneMembers::SaveImage(const QString& FileName, int nType) {
    return call_member(*link_, "SaveImage", {Argument(FileName), Argument(nType)}).truth();
}

bool PixvaneMembers::IsImageFile(const QString& FileName) {
    return call_member(*link_, "IsImageFile", {Argument(FileName)}).truth();
}

void PixvaneMembers::Undo() {
    call_member(*link_, "Undo", {});
}

void PixvaneMembers::Redo() {
    call_member(*link_, "Redo", {});
}

QList<int> PixvaneMembers::GetRHistogram() {
    return call_member(*link_, "GetRHistogram", {}).integers();
}

QList<int> PixvaneMembers::GetGHistogram() {
    return call_member(*link_, "GetGHistogram", {}).integers();
}

QList<int> PixvaneMembers::GetBHistogram() {
    return call_member(*link_, "GetBHistogram", {}).integers();
}

QList<int> PixvaneMembers::GetLHistogram() {
    return call_member(*link_, "GetLHistogram", {}).integers();
}

QByteArray PixvaneMembers::GetImageArray() {
    return call_member(*link_, "GetImageArray", {}).bytes();
}

bool PixvaneMembers::LoadFromImageArray(const QByteArray& pArray, int Width, int Height) {
    return call_member(*link_, "LoadFromImageArray", {Argument(pArray), Argument(Width),
                                                      Argument(Height)}).truth();
}

void PixvaneMembers::Desaturate() {
    call_member(*link_, "Desaturate", {});
}

void PixvaneMembers::Saturate(int nValue) {
    call_member(*link_, "Saturate", {Argument(nValue)});
}

void PixvaneMembers::Autocolor() {
    call_member(*link_, "Autocolor", {});
}

void PixvaneMembers::Contrast(int nValue) {
    call_member(*link_, "Contrast", {Argument(nValue)});
}

void PixvaneMembers::Brightness(int nRed, int nGreen, int nBlue) {
    call_member(*link_, "Brightness", {Argument(nRed), Argument(nGreen), Argument(nBlue)});
}

void PixvaneMembers::Lightness(int nRedVal, int nGreenVal, int nBlueVal) {
    call_member(*link_, "Lightness", {Argument(nRedVal), Argument(nGreenVal), Argument(nBlueVal)});
}

void PixvaneMembers::Temperature(int nVal) {
    call_member(*link_, "Temperature", {Argument(nVal)});
}

void PixvaneMembers::Noise(int nType, int nVal) {
    call_member(*link_, "Noise", {Argument(nType), Argument(nVal)});
}

void PixvaneMembers::Invert() {
    call_member(*link_, "Invert", {});
}

void PixvaneMembers::Monochrome(int nLevel, const QColor& Color1, const QColor& Color2) {
    call_member(*link_, "Monochrome", {Argument(nLevel), Argument(Color1), Argument(Color2)});
}

void PixvaneMembers::Hue(int R, int G, int B) {
    call_member(*link_, "Hue", {Argument(R), Argument(G), Argument(B)});
}

void PixvaneMembers::Sepia() {
    call_member(*link_, "Sepia", {});
}

void PixvaneMembers::BWLevels(int Colors) {
    call_member(*link_, "BWLevels", {Argument(Colors)});
}

void PixvaneMembers::Autolevels() {
    call_member(*link_, "Autolevels", {});
}

void PixvaneMembers::Autocontrast() {
    call_member(*link_, "Autocontrast", {});
}

void PixvaneMembers::Gamma(double Level) {
    call_member(*link_, "Gamma", {Argument(Level)});
}

void PixvaneMembers::Blur(int nVal) {
    call_member(*link_, "Blur", {Argument(nVal)});
}

void PixvaneMembers::Average(int nAverage, int nVal) {
    call_member(*link_, "Average", {Argument(nAverage), Argument(nVal)});
}

void PixvaneMembers::SmartBlur(int nVal, int Level) {
    call_member(*link_, "SmartBlur", {Argument(nVal), Argument(Level)});
}

void PixvaneMembers::GaussianBlur(int nVal, int B) {
    call_member(*link_, "GaussianBlur", {Argument(nVal), Argument(B)});
}

void PixvaneMembers::Sharpen() {
    call_member(*link_, "Sharpen", {});
}

void PixvaneMembers::SharpenEdge(int Level) {
    call_member(*link_, "SharpenEdge", {Argument(Level)});
}

void PixvaneMembers::UserEffect(const QList<int>& ppArray) {
    call_member(*link_, "UserEffect", {Argument(ppArray)});
}

void PixvaneMembers::Laplas() {
    call_member(*link_, "Laplas", {});
}

void PixvaneMembers::Contour() {
    call_member(*link_, "Contour", {});
}

void PixvaneMembers::Sobel(int nType) {
    call_member(*link_, "Sobel", {Argument(nType)});
}

void PixvaneMembers::Emboss(int nValue, int Direction) {
    call_member(*link_, "Emboss", {Argument(nValue), Argument(Direction)});
}

void PixvaneMembers::Relief(int nVal) {
    call_member(*link_, "Relief", {Argument(nVal)});
}

void PixvaneMembers::Minimal(int nVal) {
    call_member(*link_, "Minimal", {Argument(nVal)});
}

void PixvaneMembers::Maximal(int nVal) {
    call_member(*link_, "Maximal", {Argument(nVal)});
}

void PixvaneMembers::Median(int nVal) {
    call_member(*link_, "Median", {Argument(nVal)});
}

void PixvaneMembers::AntiNoise(int nVal) {
    call_member(*link_, "AntiNoise", {Argument(nVal)});
}

void PixvaneMembers::Diffuse(int nVal) {
    call_member(*link_, "Diffuse", {Argument(nVal)});
}

void PixvaneMembers::Mosaic(int nType, int nVal) {
    call_member(*link_, "Mosaic", {Argument(nType), Argument(nVal)});
}

void PixvaneMembers::Textile(int Val) {
    call_member(*link_, "Textile", {Argument(Val)});
}

void PixvaneMembers::SoftFocus(int nVal, int R1, int R2, int X, int Y) {
    call_member(*link_, "SoftFocus", {Argument(nVal), Argument(R1), Argument(R2), Argument(X), Argument(Y)});
}

void PixvaneMembers::FocalBW(int R1, int R2, int X, int Y) {
    call_member(*link_, "FocalBW", {Argument(R1), Argument(R2), Argument(X), Argument(Y)});
}

void PixvaneMembers::ClearImage() {
    call_member(*link_, "ClearImage", {});
}

void PixvaneMembers::SetNewSize(int Width, int Height) {
    call_member(*link_, "SetNewSize", {Argument(Width), Argument(Height)});
}

void PixvaneMembers::RotateFlip(int nType) {
    call_member(*link_, "RotateFlip", {Argument(nType)});
}

void PixvaneMembers::ScaleImage(double ScaleX, double ScaleY) {
    call_member(*link_, "ScaleImage", {Argument(ScaleX), Argument(ScaleY)});
}

void PixvaneMembers::AddSimpleBorder(int Width, const QColor& Color) {
    call_member(*link_, "AddSimpleBorder", {Argument(Width), Argument(Color)});
}

void PixvaneMembers::AddGradientBorder(int Width, const QColor& Color1, const QColor& Color2, int Style) {
    call_member(*link_, "AddGradientBorder", {Argument(Width), Argument(Color1), Argument(Color2),
                                              Argument(Style)});
}

void PixvaneMembers::ZoomIn() {
    call_member(*link_, "ZoomIn", {});
}

void PixvaneMembers::ZoomOut() {
    call_member(*link_, "ZoomOut", {});
}

void PixvaneMembers::ActialSize() {
    call_member(*link_, "ActialSize", {});
}

void PixvaneMembers::ZoomToFit() {
    call_member(*link_, "ZoomToFit", {});
}

void PixvaneMembers::BeginUpdate() {
    call_member(*link_, "BeginUpdate", {});
}

void PixvaneMembers::EndUpdate() {
    call_member(*link_, "EndUpdate", {});
}

void PixvaneMembers::BeginPreview() {
    call_member(*link_, "BeginPreview", {});
}

void PixvaneMembers::Preview(const QString& Name, const QVariantList& Arguments) {
    call_member(*link_, "Preview", QList<Argument>{Argument(Name)} + arguments_of(Arguments));
}

void PixvaneMembers::EndPreview(bool Apply) {
    call_member(*link_, "EndPreview", {Argument(Apply)});
}

QString PixvaneMembers::FontName(int Index) {
    return call_member(*link_, "FontName", {Argument(Index)}).text();
}

void PixvaneMembers::SetupFontByName(const QString& Name) {
    call_member(*link_, "SetupFontByName", {Argument(Name)});
}

void PixvaneMembers::BeginMacros() {
    call_member(*link_, "BeginMacros", {});
}

void PixvaneMembers::EndMacros() {
    call_member(*link_, "EndMacros", {});
}

bool PixvaneMembers::SaveMacros(const QString& Path) {
    return call_member(*link_, "SaveMacros", {Argument(Path)}).truth();
}

bool PixvaneMembers::LoadMacros(const QString& Path) {
    return call_member(*link_, "LoadMacros", {Argument(Path)}).truth();
}

void PixvaneMembers::PlayMacros() {
    call_member(*link_, "PlayMacros", {});
}
