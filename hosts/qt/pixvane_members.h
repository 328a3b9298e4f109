// Each member of the control in Qt's terms. Written by tools/write_bindings.py; do not edit.
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtGui/QPolygon>
#include <QtWidgets/QWidget>

#include "pixvane_qt_global.h"

namespace pixvane {
class ControlLink;
}

// Lines are broken where the program that writes them breaks them.
// clang-format off

/// The members of the control, each by its published name: a property X is read by X() and put by setX(value), a
/// method is a slot, an event a signal. PixvaneWidget is the widget. A call that the control refuses is told in
/// the log and gives nothing; a member that has nothing to return gives a null array or an empty list.
class PIXVANE_QT_API PixvaneMembers : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool IsEmpty READ IsEmpty DESIGNABLE false STORED false)
    Q_PROPERTY(int ImageWidth READ ImageWidth DESIGNABLE false STORED false)
    Q_PROPERTY(int ImageHeight READ ImageHeight DESIGNABLE false STORED false)
    Q_PROPERTY(int FramesCount READ FramesCount DESIGNABLE false STORED false)
    Q_PROPERTY(QColor BitmapBackColor READ BitmapBackColor WRITE setBitmapBackColor)
    Q_PROPERTY(QByteArray Picture READ Picture WRITE setPicture DESIGNABLE false STORED false)
    Q_PROPERTY(int JpegQuality READ JpegQuality WRITE setJpegQuality)
    Q_PROPERTY(bool UndoEnable READ UndoEnable DESIGNABLE false STORED false)
    Q_PROPERTY(bool RedoEnable READ RedoEnable DESIGNABLE false STORED false)
    Q_PROPERTY(int HistoryStates READ HistoryStates WRITE setHistoryStates)
    Q_PROPERTY(bool Modified READ Modified DESIGNABLE false STORED false)
    Q_PROPERTY(double Zoom READ Zoom DESIGNABLE false STORED false)
    Q_PROPERTY(bool AutoResize READ AutoResize WRITE setAutoResize)
    Q_PROPERTY(QColor BackColor1 READ BackColor1 WRITE setBackColor1)
    Q_PROPERTY(QColor FrameColor READ FrameColor WRITE setFrameColor)
    Q_PROPERTY(bool ShowBorder READ ShowBorder WRITE setShowBorder)
    Q_PROPERTY(bool ShowDetails READ ShowDetails WRITE setShowDetails)
    Q_PROPERTY(bool ScrollWindowVisible READ ScrollWindowVisible WRITE setScrollWindowVisible)
    Q_PROPERTY(QColor ScrollWindowColor READ ScrollWindowColor WRITE setScrollWindowColor)
    Q_PROPERTY(int PaintStatus READ PaintStatus WRITE setPaintStatus)
    Q_PROPERTY(int PenWidth READ PenWidth WRITE setPenWidth)
    Q_PROPERTY(int PenStyle READ PenStyle WRITE setPenStyle)
    Q_PROPERTY(QColor PenColor READ PenColor WRITE setPenColor)
    Q_PROPERTY(int PenTransparency READ PenTransparency WRITE setPenTransparency)
    Q_PROPERTY(int SmoothMode READ SmoothMode WRITE setSmoothMode)
    Q_PROPERTY(int FontIndex READ FontIndex WRITE setFontIndex)
    Q_PROPERTY(bool FontStyleItalic READ FontStyleItalic WRITE setFontStyleItalic)
    Q_PROPERTY(bool FontStyleBold READ FontStyleBold WRITE setFontStyleBold)
    Q_PROPERTY(bool FontStyleUnderline READ FontStyleUnderline WRITE setFontStyleUnderline)
    Q_PROPERTY(bool FontStyleStrikeout READ FontStyleStrikeout WRITE setFontStyleStrikeout)
    Q_PROPERTY(int FontSize READ FontSize WRITE setFontSize)
    Q_PROPERTY(int BrushStyle READ BrushStyle WRITE setBrushStyle)
    Q_PROPERTY(int BrushHatchStyle READ BrushHatchStyle WRITE setBrushHatchStyle)
    Q_PROPERTY(int BrushTextureStyle READ BrushTextureStyle WRITE setBrushTextureStyle)
    Q_PROPERTY(int BrushGradientStyle READ BrushGradientStyle WRITE setBrushGradientStyle)
    Q_PROPERTY(int BrushTransparency READ BrushTransparency WRITE setBrushTransparency)
    Q_PROPERTY(QString TextureFileName READ TextureFileName WRITE setTextureFileName)
    Q_PROPERTY(int SprayRadius READ SprayRadius WRITE setSprayRadius)
    Q_PROPERTY(int ToolBrushSize READ ToolBrushSize WRITE setToolBrushSize)
    Q_PROPERTY(int ToolBrushStyle READ ToolBrushStyle WRITE setToolBrushStyle)
    Q_PROPERTY(int EraserSize READ EraserSize WRITE setEraserSize)
    Q_PROPERTY(int ImageStyle READ ImageStyle WRITE setImageStyle)
    Q_PROPERTY(int ImageTransparency1 READ ImageTransparency1 WRITE setImageTransparency1)
    Q_PROPERTY(int ImageTransparency2 READ ImageTransparency2 WRITE setImageTransparency2)
    Q_PROPERTY(QColor ImageMaskColor READ ImageMaskColor WRITE setImageMaskColor)
    Q_PROPERTY(bool UseImageMaskColor READ UseImageMaskColor WRITE setUseImageMaskColor)
    Q_PROPERTY(QColor BrushColor1 READ BrushColor1 WRITE setBrushColor1)
    Q_PROPERTY(QColor BrushColor2 READ BrushColor2 WRITE setBrushColor2)
    Q_PROPERTY(int FontCount READ FontCount DESIGNABLE false STORED false)
    Q_PROPERTY(bool Recording READ Recording DESIGNABLE false STORED false)

public:
    ~PixvaneMembers() override;

    /// Whether the control holds no picture.
    bool IsEmpty() const;
    /// Width of the picture in pixels, 0 when empty.
    int ImageWidth() const;
    /// Height of the picture in pixels, 0 when empty.
    int ImageHeight() const;
    /// Frames or pages of the file that the picture came from, 0 when empty.
    int FramesCount() const;
    /// Colour of new, cleared and enlarged canvas.
    QColor BitmapBackColor() const;
    /// The picture as a BMP file of 24 bits over white; put takes any picture file.
    QByteArray Picture() const;
    /// Quality of saved JPEG files; limited to 0..100.
    int JpegQuality() const;
    /// Whether Undo would go back.
    bool UndoEnable() const;
    /// Whether Redo would go forward.
    bool RedoEnable() const;
    /// How many states are kept, the current one too; a put drops what can be redone.
    int HistoryStates() const;
    /// Whether the picture was edited since it was made, loaded or saved.
    bool Modified() const;
    /// Window pixels for each pixel of the picture.
    double Zoom() const;
    /// Whether a resize of the window fits the picture anew.
    bool AutoResize() const;
    /// Colour around the picture.
    QColor BackColor1() const;
    /// Colour of the frame around the picture.
    QColor FrameColor() const;
    /// Whether a frame is drawn around the picture.
    bool ShowBorder() const;
    /// Whether name and size of the folder's current file are shown.
    bool ShowDetails() const;
    /// Whether an overview is shown while the picture overflows the window.
    bool ScrollWindowVisible() const;
    /// Colour of the overview, which is half transparent.
    QColor ScrollWindowColor() const;
    /// Mode of the mouse: 0 none, 1 to 26 a tool; a put resets every tool.
    int PaintStatus() const;
    /// Width of outlines in pixels.
    int PenWidth() const;
    /// Outlines: 0 solid, 1 to 4 dashed, others none.
    int PenStyle() const;
    /// Colour of outlines; keeps their alpha.
    QColor PenColor() const;
    /// Alpha of outlines: 0 invisible, 255 opaque.
    int PenTransparency() const;
    /// 1: lines and shapes are smooth; others: their pixels are all or none.
    int SmoothMode() const;
    /// Family of texts by its number, below FontCount.
    int FontIndex() const;
    /// Whether texts are italic.
    bool FontStyleItalic() const;
    /// Whether texts are bold.
    bool FontStyleBold() const;
    /// Whether texts are underlined.
    bool FontStyleUnderline() const;
    /// Whether texts are struck out.
    bool FontStyleStrikeout() const;
    /// Height of texts in pixels.
    int FontSize() const;
    /// Fillings: 0 solid, 1 gradient, 2 hatch, 3 texture, from 4 on none.
    int BrushStyle() const;
    /// Pattern of a hatch.
    int BrushHatchStyle() const;
    /// Tiles of a texture: 0 alike, 1 every other one flipped in x, 2 in y, 3 in both.
    int BrushTextureStyle() const;
    /// Gradients: 0 to the right, 1 down, 2 and 3 along the diagonals.
    int BrushGradientStyle() const;
    /// Alpha of fillings: 0 invisible, 255 opaque.
    int BrushTransparency() const;
    /// Picture file of the texture; one that can't be read changes nothing.
    QString TextureFileName() const;
    /// Radius of the spray in pixels.
    int SprayRadius() const;
    /// Size of the brush.
    int ToolBrushSize() const;
    /// Tip of the brush.
    int ToolBrushStyle() const;
    /// Size of the eraser.
    int EraserSize() const;
    /// How a picture is stamped into the picture.
    int ImageStyle() const;
    /// First alpha of a stamped picture.
    int ImageTransparency1() const;
    /// Second alpha of a stamped picture.
    int ImageTransparency2() const;
    /// Colour that a stamped picture leaves out while UseImageMaskColor is on.
    QColor ImageMaskColor() const;
    /// Whether ImageMaskColor is left out.
    bool UseImageMaskColor() const;
    /// Colour of fillings, start of a gradient, ground of a hatch.
    QColor BrushColor1() const;
    /// End of a gradient, lines of a hatch.
    QColor BrushColor2() const;
    /// How many families of fonts the machine has.
    int FontCount() const;
    /// Whether a macro is being recorded.
    bool Recording() const;

public Q_SLOTS:
    /// Colour of new, cleared and enlarged canvas.
    /// Value: color, default 0xFFFFFF.
    void setBitmapBackColor(const QColor& Value);
    /// The picture as a BMP file of 24 bits over white; put takes any picture file.
    void setPicture(const QByteArray& Value);
    /// Quality of saved JPEG files; limited to 0..100.
    /// Value: integer, slider 0 to 100, default 90.
    void setJpegQuality(int Value);
    /// How many states are kept, the current one too; a put drops what can be redone.
    /// Value: integer, 2 to 16, slider 2 to 16, default 16.
    void setHistoryStates(int Value);
    /// Whether a resize of the window fits the picture anew.
    /// Value: boolean, default false.
    void setAutoResize(bool Value);
    /// Colour around the picture.
    /// Value: color, default 0x8B0000.
    void setBackColor1(const QColor& Value);
    /// Colour of the frame around the picture.
    /// Value: color, default 0xD3D3D3.
    void setFrameColor(const QColor& Value);
    /// Whether a frame is drawn around the picture.
    /// Value: boolean, default true.
    void setShowBorder(bool Value);
    /// Whether name and size of the folder's current file are shown.
    /// Value: boolean, default false.
    void setShowDetails(bool Value);
    /// Whether an overview is shown while the picture overflows the window.
    /// Value: boolean, default false.
    void setScrollWindowVisible(bool Value);
    /// Colour of the overview, which is half transparent.
    /// Value: color, default 0x505050.
    void setScrollWindowColor(const QColor& Value);
    /// Mode of the mouse: 0 none, 1 to 26 a tool; a put resets every tool.
    /// Value: integer, slider 0 to 26, default 0.
    void setPaintStatus(int Value);
    /// Width of outlines in pixels.
    /// Value: integer, 1 to 8, slider 1 to 8, default 1.
    void setPenWidth(int Value);
    /// Outlines: 0 solid, 1 to 4 dashed, others none.
    /// Value: integer, slider 0 to 4, default 0.
    void setPenStyle(int Value);
    /// Colour of outlines; keeps their alpha.
    /// Value: color, default 0x000000.
    void setPenColor(const QColor& Value);
    /// Alpha of outlines: 0 invisible, 255 opaque.
    /// Value: integer, 0 to 255, slider 0 to 255, default 255.
    void setPenTransparency(int Value);
    /// 1: lines and shapes are smooth; others: their pixels are all or none.
    /// Value: integer, slider 0 to 2, default 0.
    void setSmoothMode(int Value);
    /// Family of texts by its number, below FontCount.
    /// Value: integer, at least 0.
    void setFontIndex(int Value);
    /// Whether texts are italic.
    /// Value: boolean, default false.
    void setFontStyleItalic(bool Value);
    /// Whether texts are bold.
    /// Value: boolean, default false.
    void setFontStyleBold(bool Value);
    /// Whether texts are underlined.
    /// Value: boolean, default false.
    void setFontStyleUnderline(bool Value);
    /// Whether texts are struck out.
    /// Value: boolean, default false.
    void setFontStyleStrikeout(bool Value);
    /// Height of texts in pixels.
    /// Value: integer, 6 to 255, slider 6 to 255, default 16.
    void setFontSize(int Value);
    /// Fillings: 0 solid, 1 gradient, 2 hatch, 3 texture, from 4 on none.
    /// Value: integer, at least 0, slider 0 to 3, default 0.
    void setBrushStyle(int Value);
    /// Pattern of a hatch.
    /// Value: integer, 0 to 52, slider 0 to 52, default 0.
    void setBrushHatchStyle(int Value);
    /// Tiles of a texture: 0 alike, 1 every other one flipped in x, 2 in y, 3 in both.
    /// Value: integer, 0 to 3, slider 0 to 3, default 0.
    void setBrushTextureStyle(int Value);
    /// Gradients: 0 to the right, 1 down, 2 and 3 along the diagonals.
    /// Value: integer, 0 to 3, slider 0 to 3, default 0.
    void setBrushGradientStyle(int Value);
    /// Alpha of fillings: 0 invisible, 255 opaque.
    /// Value: integer, 0 to 255, slider 0 to 255, default 255.
    void setBrushTransparency(int Value);
    /// Picture file of the texture; one that can't be read changes nothing.
    void setTextureFileName(const QString& Value);
    /// Radius of the spray in pixels.
    /// Value: integer, 8 to 50, slider 8 to 50, default 20.
    void setSprayRadius(int Value);
    /// Size of the brush.
    /// Value: integer, 1 to 11, slider 1 to 11, default 5.
    void setToolBrushSize(int Value);
    /// Tip of the brush.
    /// Value: integer, 0 to 5, slider 0 to 5, default 0.
    void setToolBrushStyle(int Value);
    /// Size of the eraser.
    /// Value: integer, 1 to 11, slider 1 to 11, default 5.
    void setEraserSize(int Value);
    /// How a picture is stamped into the picture.
    /// Value: integer, 0 to 6, slider 0 to 6, default 0.
    void setImageStyle(int Value);
    /// First alpha of a stamped picture.
    /// Value: integer, 0 to 255, slider 0 to 255, default 255.
    void setImageTransparency1(int Value);
    /// Second alpha of a stamped picture.
    /// Value: integer, 0 to 255, slider 0 to 255, default 255.
    void setImageTransparency2(int Value);
    /// Colour that a stamped picture leaves out while UseImageMaskColor is on.
    /// Value: color, default 0xFFFFFF.
    void setImageMaskColor(const QColor& Value);
    /// Whether ImageMaskColor is left out.
    /// Value: boolean, default false.
    void setUseImageMaskColor(bool Value);
    /// Colour of fillings, start of a gradient, ground of a hatch.
    /// Value: color, default 0xFFFFFF.
    void setBrushColor1(const QColor& Value);
    /// End of a gradient, lines of a hatch.
    /// Value: color, default 0x000000.
    void setBrushColor2(const QColor& Value);
    /// Starts a new picture filled with BitmapBackColor.
    /// Width: integer, 4 to 65535, slider 4 to 8000, default 800.
    /// Height: integer, 4 to 65535, slider 4 to 8000, default 600.
    void NewImage(int Width, int Height);
    /// Drops the picture and its history.
    void Empty();
    /// Colour of a pixel, 0 outside of the picture.
    QColor GetPixel(int X, int Y);
    /// Loads a picture file; false, and the control is empty, if it can't be read.
    bool LoadImage(const QString& FileName);
    /// Saves the picture: 0 BMP, 1 JPEG, 2 GIF, 3 TIFF, 4 PNG; false if it can't be written.
    /// nType: integer, 0 to 4, slider 0 to 4, default 4.
    bool SaveImage(const QString& FileName, int nType);
    /// Whether a file is a picture that can be loaded.
    bool IsImageFile(const QString& FileName);
    /// Goes back one step of the history.
    void Undo();
    /// Goes forward again to a step that was undone.
    void Redo();
    /// Counts of the 256 values of red; null when empty.
    QList<int> GetRHistogram();
    /// Counts of the 256 values of green; null when empty.
    QList<int> GetGHistogram();
    /// Counts of the 256 values of blue; null when empty.
    QList<int> GetBHistogram();
    /// Counts of the 256 values of luminance; null when empty.
    QList<int> GetLHistogram();
    /// The pixels as bytes B, G, R, A, rows top first; null when empty.
    QByteArray GetImageArray();
    /// Makes pixels the picture: bytes B, G, R, A, rows top first, from 2 x 2 up.
    /// Width: integer, 2 to 65535.
    /// Height: integer, 2 to 65535.
    bool LoadFromImageArray(const QByteArray& pArray, int Width, int Height);
    /// Turns the picture grey by luma.
    void Desaturate();
    /// Colour strength in percent.
    /// nValue: integer, slider -400 to 400, default 130.
    void Saturate(int nValue);
    /// Stretches each channel on its own, which takes a cast away.
    void Autocolor();
    /// Contrast in percent, around the middle grey.
    /// nValue: integer, slider -400 to 400, default 120.
    void Contrast(int nValue);
    /// Adds to each channel.
    /// nRed: integer, slider -255 to 255, default 20.
    /// nGreen: integer, slider -255 to 255, default 20.
    /// nBlue: integer, slider -255 to 255, default 20.
    void Brightness(int nRed, int nGreen, int nBlue);
    /// Multiplies each channel, in percent.
    /// nRedVal: integer, at least 0, slider 0 to 400, default 110.
    /// nGreenVal: integer, at least 0, slider 0 to 400, default 110.
    /// nBlueVal: integer, at least 0, slider 0 to 400, default 110.
    void Lightness(int nRedVal, int nGreenVal, int nBlueVal);
    /// Warms (above 0) or cools the colours, in percent.
    /// nVal: integer, -100 to 100, slider -100 to 100, default 10.
    void Temperature(int nVal);
    /// Adds random noise: type 0 the same to all channels, others to each its own.
    /// nType: integer, slider 0 to 1, default 0.
    /// nVal: integer, slider 0 to 255, default 30.
    void Noise(int nType, int nVal);
    /// Turns the picture into its negative.
    void Invert();
    /// Two colours: the first where the mean of the channels is above the level.
    /// nLevel: integer, slider 0 to 255, default 127.
    /// Color1: color, default 0xFFFFFF.
    /// Color2: color, default 0x000000.
    void Monochrome(int nLevel, const QColor& Color1, const QColor& Color2);
    /// Tones the picture by a colour.
    /// R: integer, 0 to 255, slider 0 to 255, default 160.
    /// G: integer, 0 to 255, slider 0 to 255, default 133.
    /// B: integer, 0 to 255, slider 0 to 255, default 107.
    void Hue(int R, int G, int B);
    /// Tones the picture brown like an old photograph.
    void Sepia();
    /// Grey in a number of steps.
    /// Colors: integer, 2 to 256, slider 2 to 256, default 4.
    void BWLevels(int Colors);
    /// Sets the levels of each channel from its histogram.
    void Autolevels();
    /// Sets common levels from the histogram of all channels.
    void Autocontrast();
    /// Gamma curve: below 1 brightens, above 1 darkens.
    /// Level: double, at least 0.02, slider 0.1 to 5, default 0.8.
    void Gamma(double Level);
    /// Mean over a square around each pixel.
    /// nVal: integer, 1 to 16384, slider 1 to 50, default 3.
    void Blur(int nVal);
    /// Mean over a square whose centre has a weight of its own; black for radii below 0.
    /// nAverage: integer, slider -20 to 20, default 1.
    /// nVal: integer, -8 to 16384, slider 0 to 50, default 2.
    void Average(int nAverage, int nVal);
    /// Blurs flat areas and keeps those whose range is above the level.
    /// nVal: integer, 1 to 16384, slider 1 to 50, default 2.
    /// Level: integer, slider 0 to 255, default 30.
    void SmartBlur(int nVal, int Level);
    /// Blur with weights that fall with the distance, the steeper the larger B.
    /// nVal: integer, 1 to 16384, slider 1 to 50, default 5.
    /// B: integer, at least 1, slider 1 to 100, default 1.
    void GaussianBlur(int nVal, int B);
    /// Sharpens against the diagonal neighbours.
    void Sharpen();
    /// Sharpens where the range of the neighbours is at least the level.
    /// Level: integer, slider 0 to 255, default 30.
    void SharpenEdge(int Level);
    /// Applies a kernel of 3 x 3 or 5 x 5 weights, column by column.
    void UserEffect(const QList<int>& ppArray);
    /// Light edges on black, by four neighbours.
    void Laplas();
    /// Light edges on black, by eight neighbours.
    void Contour();
    /// Gradient: 0 right less left, 1 left less right, 2 bottom less top, 3 top less bottom.
    /// nType: integer, slider 0 to 3, default 0.
    void Sobel(int nType);
    /// Grey relief of the difference to a neighbour, in one of eight directions.
    /// nValue: integer, -10 to 10, slider -10 to 10, default 1.
    /// Direction: integer, slider 0 to 7, default 3.
    void Emboss(int nValue, int Direction);
    /// Lights the picture from one side, turned by 45 degrees for each step.
    /// nVal: integer, slider 0 to 7, default 1.
    void Relief(int nVal);
    /// The least value of each channel within the radius.
    /// nVal: integer, 0 to 16384, slider 0 to 50, default 2.
    void Minimal(int nVal);
    /// The largest value of each channel within the radius.
    /// nVal: integer, 0 to 16384, slider 0 to 50, default 2.
    void Maximal(int nVal);
    /// The middle value of each channel within the radius.
    /// nVal: integer, 0 to 16384, slider 0 to 50, default 2.
    void Median(int nVal);
    /// Replaces channels that stand out by their mean within the radius.
    /// nVal: integer, 1 to 16384, slider 1 to 7, default 1.
    void AntiNoise(int nVal);
    /// Takes each pixel from a random place within the radius.
    /// nVal: integer, at least 1, slider 1 to 50, default 3.
    void Diffuse(int nVal);
    /// Tiles of 2 nVal + 1 pixels: type 0 of their middle's colour, others of their mean.
    /// nType: integer, slider 0 to 1, default 1.
    /// nVal: integer, at least 1, slider 1 to 100, default 5.
    void Mosaic(int nType, int nVal);
    /// Draws a weave of short random strokes, black and white, of less than this alpha.
    /// Val: integer, at least 1, slider 1 to 256, default 40.
    void Textile(int Val);
    /// Blurs in nVal passes outside of R1 around a point, fully from R1 + R2 on.
    /// nVal: integer, at least 1, slider 1 to 10, default 3.
    /// R1: integer, at least 1, slider 1 to 2000, default 100.
    /// R2: integer, at least 1, slider 1 to 2000, default 200.
    /// X: integer, slider 0 to 8000, default 400.
    /// Y: integer, slider 0 to 8000, default 300.
    void SoftFocus(int nVal, int R1, int R2, int X, int Y);
    /// Keeps colour within R1 around a point and fades to grey over the next R2 pixels.
    /// R1: integer, slider 0 to 2000, default 100.
    /// R2: integer, slider 0 to 2000, default 200.
    /// X: integer, slider 0 to 8000, default 400.
    /// Y: integer, slider 0 to 8000, default 300.
    void FocalBW(int R1, int R2, int X, int Y);
    /// Fills the picture with BitmapBackColor.
    void ClearImage();
    /// Cuts or enlarges the canvas on the right and at the bottom, without scaling.
    /// Width: integer, 1 to 65535, slider 1 to 8000, default 800.
    /// Height: integer, 1 to 65535, slider 1 to 8000, default 600.
    void SetNewSize(int Width, int Height);
    /// Turns clockwise by nType quarter turns; from 4 on, then flips left to right.
    /// nType: integer, 0 to 7, slider 0 to 7, default 1.
    void RotateFlip(int nType);
    /// Scales by a factor for each side; below 0.5 by the mean of what a pixel covers.
    /// ScaleX: double, 1e-05 to 65535, slider 0.05 to 4, default 0.5.
    /// ScaleY: double, 1e-05 to 65535, slider 0.05 to 4, default 0.5.
    void ScaleImage(double ScaleX, double ScaleY);
    /// Adds a border of one colour.
    /// Width: integer, 1 to 65535, slider 1 to 200, default 16.
    /// Color: color, default 0xFFFFFF.
    void AddSimpleBorder(int Width, const QColor& Color);
    /// Adds a border of a gradient: Style 0 to the right, 1 down, 2 and 3 along the diagonals.
    /// Width: integer, 1 to 65535, slider 1 to 200, default 16.
    /// Color1: color, default 0xFFFFFF.
    /// Color2: color, default 0x804000.
    /// Style: integer, slider 0 to 3, default 2.
    void AddGradientBorder(int Width, const QColor& Color1, const QColor& Color2, int Style);
    /// Zooms in by one tenth, from below 8 only.
    void ZoomIn();
    /// Zooms out by the same step, from above 0.1 only.
    void ZoomOut();
    /// Zooms to 1.0 (to 0.1 from below it, to 16.0 from above it).
    void ActialSize();
    /// Zooms so that the picture fits the window.
    void ZoomToFit();
    /// Suspends repainting until EndUpdate.
    void BeginUpdate();
    /// Repaints, and goes on repainting; one ends any number of BeginUpdate.
    void EndUpdate();
    /// Opens a preview; any edit, undo, new document or mode ends it again.
    void BeginPreview();
    /// Shows what a command would make of the picture, until the next one is shown.
    void Preview(const QString& Name, const QVariantList& Arguments);
    /// Ends the preview; with Apply the command shown last is called.
    void EndPreview(bool Apply);
    /// Name of a family; empty if there is none of this number.
    /// Index: integer, at least 0.
    QString FontName(int Index);
    /// Chooses a family by its name; nothing if there is none.
    void SetupFontByName(const QString& Name);
    /// Starts a macro with all drawing settings, and records what follows.
    void BeginMacros();
    /// Ends the recording; the macro stays.
    void EndMacros();
    /// Saves the macro; false if it has no steps or can't be written.
    bool SaveMacros(const QString& Path);
    /// Loads a macro; false, and it is empty, if that fails.
    bool LoadMacros(const QString& Path);
    /// Replays the macro on the picture; drawing settings are afterwards as before.
    void PlayMacros();

Q_SIGNALS:
    /// A file was dropped on the control; nothing is loaded.
    void OnDropFile(const QString& FileName);
    /// A button (0 left, 1 middle, 2 right) was pressed at a point of the picture.
    void OnMouseDown(int Button, int X, int Y);
    /// A button was released at a point of the picture.
    void OnMouseUp(int Button, int X, int Y);
    /// The pointer moved, with a button held or -1, to a point of the picture.
    void OnMouseMove(int Button, int X, int Y);
    /// A button was double-clicked at a point of the picture.
    void OnDblClick(int Button, int X, int Y);
    /// A track point was picked in mode 21.
    void OnTrackPointMouseDown(int X, int Y);
    /// The track point that is held was dragged.
    void OnTrackPointMouseMove(int X, int Y);
    /// The track point that was held is let go.
    void OnTrackPointMouseUp(int X, int Y);
    /// APPLY was pressed in mode 20: the picture is rotated.
    void OnHitApplyRotate();
    /// CANCEL was pressed in mode 20: the picture stays as it is.
    void OnHitCancelRotate();
    /// The angle of rotation was dragged in mode 20.
    void OnRotateAt(double Angle);
    /// Red eyes were corrected in mode 19.
    void OnRedEyeCorrect();
    /// Another colour was picked in mode 26.
    void OnColorChanged();
    /// The close box of the overview was pressed; hiding it is up to the host.
    void OnHitCloseScrollWindow();

protected:
    /// Throws std::bad_alloc if no control can be made.
    explicit PixvaneMembers(QWidget* parent);
    pixvane::ControlLink& link() const { return *link_; }

private:
    void listen();

    pixvane::ControlLink* link_;  // may outlive the widget
};
