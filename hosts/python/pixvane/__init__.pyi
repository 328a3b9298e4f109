# The types of Pixvane for Python. Written by tools/write_bindings.py; do not edit.
# SPDX-License-Identifier: MIT
from os import PathLike
from types import TracebackType
from typing import Any, Callable, Iterable, List, Literal, Optional, Type, Union, overload

from ._errors import PixvaneError as PixvaneError
from ._macros import MacroStep as MacroStep
from ._table import Argument as Argument, Member as Member
from ._window import Window as Window

Buffer = Any  # anything with contiguous memory: bytes, bytearray, memoryview, array, ...

__version__: str

def members() -> List[Member]:
    """Every method, property and event of the control, in the order of its table."""

def worker_threads() -> int:
    """How many threads work on one command, the caller included."""

def set_worker_threads(count: int) -> None:
    """Sets how many threads work on one command: 1 to 64. No result depends on it."""

def seed_random(state: int) -> None:
    """Starts the random numbers of this thread anew: the same state gives the same noise. Threads start with 1."""

def bitmap_limit() -> int:
    """The most bytes that all bitmaps of the process may take together."""

def set_bitmap_limit(count: int) -> None:
    """Sets the most bytes that all bitmaps of the process may take; beyond it, an edit fails for lack of memory."""

def bitmap_bytes() -> int:
    """Bytes in bitmaps now."""

class Pixvane:
    def __init__(self) -> None: ...
    def __enter__(self) -> Pixvane: ...
    def __exit__(
        self,
        type: Optional[Type[BaseException]],
        value: Optional[BaseException],
        traceback: Optional[TracebackType],
    ) -> None: ...
    def close(self) -> None:
        """Frees the picture, its history and the control; every later call raises PixvaneError."""

    @property
    def window(self) -> Window:
        """The window that the control is shown in: what happens to it, and what it shows."""

    def macro_steps(self) -> List[MacroStep]:
        """The steps of the macro, as a list of MacroStep."""

    @overload
    def on(self, event: Literal["OnDropFile"], handler: Callable[[str], object]) -> None:
        """A file was dropped on the control; nothing is loaded.

            FileName  string
        """

    @overload
    def on(self, event: Literal["OnMouseDown"], handler: Callable[[int, int, int], object]) -> None:
        """A button (0 left, 1 middle, 2 right) was pressed at a point of the picture.

            Button  integer
            X       integer
            Y       integer
        """

    @overload
    def on(self, event: Literal["OnMouseUp"], handler: Callable[[int, int, int], object]) -> None:
        """A button was released at a point of the picture.

            Button  integer
            X       integer
            Y       integer
        """

    @overload
    def on(self, event: Literal["OnMouseMove"], handler: Callable[[int, int, int], object]) -> None:
        """The pointer moved, with a button held or -1, to a point of the picture.

            Button  integer
            X       integer
            Y       integer
        """

    @overload
    def on(self, event: Literal["OnDblClick"], handler: Callable[[int, int, int], object]) -> None:
        """A button was double-clicked at a point of the picture.

            Button  integer
            X       integer
            Y       integer
        """

    @overload
    def on(self, event: Literal["OnTrackPointMouseDown"], handler: Callable[[int, int], object]) -> None:
        """A track point was picked in mode 21.

            X  integer
            Y  integer
        """

    @overload
    def on(self, event: Literal["OnTrackPointMouseMove"], handler: Callable[[int, int], object]) -> None:
        """The track point that is held was dragged.

            X  integer
            Y  integer
        """

    @overload
    def on(self, event: Literal["OnTrackPointMouseUp"], handler: Callable[[int, int], object]) -> None:
        """The track point that was held is let go.

            X  integer
            Y  integer
        """

    @overload
    def on(self, event: Literal["OnHitApplyRotate"], handler: Callable[[], object]) -> None:
        """APPLY was pressed in mode 20: the picture is rotated."""

    @overload
    def on(self, event: Literal["OnHitCancelRotate"], handler: Callable[[], object]) -> None:
        """CANCEL was pressed in mode 20: the picture stays as it is."""

    @overload
    def on(self, event: Literal["OnRotateAt"], handler: Callable[[float], object]) -> None:
        """The angle of rotation was dragged in mode 20.

            Angle  double
        """

    @overload
    def on(self, event: Literal["OnRedEyeCorrect"], handler: Callable[[], object]) -> None:
        """Red eyes were corrected in mode 19."""

    @overload
    def on(self, event: Literal["OnColorChanged"], handler: Callable[[], object]) -> None:
        """Another colour was picked in mode 26."""

    @overload
    def on(self, event: Literal["OnHitCloseScrollWindow"], handler: Callable[[], object]) -> None:
        """The close box of the overview was pressed; hiding it is up to the host."""

    def off(self, event: Literal["OnDropFile", "OnMouseDown", "OnMouseUp", "OnMouseMove", "OnDblClick", "OnTrackPointMouseDown", "OnTrackPointMouseMove", "OnTrackPointMouseUp", "OnHitApplyRotate", "OnHitCancelRotate", "OnRotateAt", "OnRedEyeCorrect", "OnColorChanged", "OnHitCloseScrollWindow"], handler: Optional[Callable[..., object]] = ...) -> None:
        """Ends what `on` began: for this handler, or for all handlers of the event."""

    def NewImage(self, Width: int, Height: int, /) -> None:
        """Starts a new picture filled with BitmapBackColor.

            Width   integer, 4 to 65535, slider 4 to 8000, default 800
            Height  integer, 4 to 65535, slider 4 to 8000, default 600
        """

    def Empty(self) -> None:
        """Drops the picture and its history."""

    @property
    def IsEmpty(self) -> bool:
        """Whether the control holds no picture.

            boolean, read only
        """

    @property
    def ImageWidth(self) -> int:
        """Width of the picture in pixels, 0 when empty.

            integer, read only
        """

    @property
    def ImageHeight(self) -> int:
        """Height of the picture in pixels, 0 when empty.

            integer, read only
        """

    @property
    def FramesCount(self) -> int:
        """Frames or pages of the file that the picture came from, 0 when empty.

            integer, read only
        """

    def GetPixel(self, X: int, Y: int, /) -> int:
        """Colour of a pixel, 0 outside of the picture.

            X  integer
            Y  integer
        """

    @property
    def BitmapBackColor(self) -> int:
        """Colour of new, cleared and enlarged canvas.

            color, default 0xFFFFFF, get and put
        """
    @BitmapBackColor.setter
    def BitmapBackColor(self, value: int) -> None: ...

    @property
    def Picture(self) -> Optional[bytes]:
        """The picture as a BMP file of 24 bits over white; put takes any picture file.

            bytes, get and put
        """
    @Picture.setter
    def Picture(self, value: Optional[Buffer]) -> None: ...

    def LoadImage(self, FileName: Union[str, PathLike[str]], /) -> bool:
        """Loads a picture file; false, and the control is empty, if it can't be read.

            FileName  string
        """

    def SaveImage(self, FileName: Union[str, PathLike[str]], nType: int, /) -> bool:
        """Saves the picture: 0 BMP, 1 JPEG, 2 GIF, 3 TIFF, 4 PNG; false if it can't be written.

            FileName  string
            nType     integer, 0 to 4, slider 0 to 4, default 4
        """

    def IsImageFile(self, FileName: Union[str, PathLike[str]], /) -> bool:
        """Whether a file is a picture that can be loaded.

            FileName  string
        """

    @property
    def JpegQuality(self) -> int:
        """Quality of saved JPEG files; limited to 0..100.

            integer, slider 0 to 100, default 90, get and put
        """
    @JpegQuality.setter
    def JpegQuality(self, value: int) -> None: ...

    def Undo(self) -> None:
        """Goes back one step of the history."""

    def Redo(self) -> None:
        """Goes forward again to a step that was undone."""

    @property
    def UndoEnable(self) -> bool:
        """Whether Undo would go back.

            boolean, read only
        """

    @property
    def RedoEnable(self) -> bool:
        """Whether Redo would go forward.

            boolean, read only
        """

    @property
    def HistoryStates(self) -> int:
        """How many states are kept, the current one too; a put drops what can be redone.

            integer, 2 to 16, slider 2 to 16, default 16, get and put
        """
    @HistoryStates.setter
    def HistoryStates(self, value: int) -> None: ...

    @property
    def Modified(self) -> bool:
        """Whether the picture was edited since it was made, loaded or saved.

            boolean, read only
        """

    def GetRHistogram(self) -> Optional[List[int]]:
        """Counts of the 256 values of red; null when empty."""

    def GetGHistogram(self) -> Optional[List[int]]:
        """Counts of the 256 values of green; null when empty."""

    def GetBHistogram(self) -> Optional[List[int]]:
        """Counts of the 256 values of blue; null when empty."""

    def GetLHistogram(self) -> Optional[List[int]]:
        """Counts of the 256 values of luminance; null when empty."""

    def GetImageArray(self) -> Optional[bytes]:
        """The pixels as bytes B, G, R, A, rows top first; null when empty."""

    def LoadFromImageArray(self, pArray: Optional[Buffer], Width: int, Height: int, /) -> bool:
        """Makes pixels the picture: bytes B, G, R, A, rows top first, from 2 x 2 up.

            pArray  bytes
            Width   integer, 2 to 65535
            Height  integer, 2 to 65535
        """

    def Desaturate(self) -> None:
        """Turns the picture grey by luma.

        One step of the history: Undo takes it back.
        """

    def Saturate(self, nValue: int, /) -> None:
        """Colour strength in percent.

            nValue  integer, slider -400 to 400, default 130

        One step of the history: Undo takes it back.
        """

    def Autocolor(self) -> None:
        """Stretches each channel on its own, which takes a cast away.

        One step of the history: Undo takes it back.
        """

    def Contrast(self, nValue: int, /) -> None:
        """Contrast in percent, around the middle grey.

            nValue  integer, slider -400 to 400, default 120

        One step of the history: Undo takes it back.
        """

    def Brightness(self, nRed: int, nGreen: int, nBlue: int, /) -> None:
        """Adds to each channel.

            nRed    integer, slider -255 to 255, default 20
            nGreen  integer, slider -255 to 255, default 20
            nBlue   integer, slider -255 to 255, default 20

        One step of the history: Undo takes it back.
        """

    def Lightness(self, nRedVal: int, nGreenVal: int, nBlueVal: int, /) -> None:
        """Multiplies each channel, in percent.

            nRedVal    integer, at least 0, slider 0 to 400, default 110
            nGreenVal  integer, at least 0, slider 0 to 400, default 110
            nBlueVal   integer, at least 0, slider 0 to 400, default 110

        One step of the history: Undo takes it back.
        """

    def Temperature(self, nVal: int, /) -> None:
        """Warms (above 0) or cools the colours, in percent.

            nVal  integer, -100 to 100, slider -100 to 100, default 10

        One step of the history: Undo takes it back.
        """

    def Noise(self, nType: int, nVal: int, /) -> None:
        """Adds random noise: type 0 the same to all channels, others to each its own.

            nType  integer, slider 0 to 1, default 0
            nVal   integer, slider 0 to 255, default 30

        One step of the history: Undo takes it back.
        """

    def Invert(self) -> None:
        """Turns the picture into its negative.

        One step of the history: Undo takes it back.
        """

    def Monochrome(self, nLevel: int, Color1: int, Color2: int, /) -> None:
        """Two colours: the first where the mean of the channels is above the level.

            nLevel  integer, slider 0 to 255, default 127
            Color1  color, default 0xFFFFFF
            Color2  color, default 0x000000

        One step of the history: Undo takes it back.
        """

    def Hue(self, R: int, G: int, B: int, /) -> None:
        """Tones the picture by a colour.

            R  integer, 0 to 255, slider 0 to 255, default 160
            G  integer, 0 to 255, slider 0 to 255, default 133
            B  integer, 0 to 255, slider 0 to 255, default 107

        One step of the history: Undo takes it back.
        """

    def Sepia(self) -> None:
        """Tones the picture brown like an old photograph.

        One step of the history: Undo takes it back.
        """

    def BWLevels(self, Colors: int, /) -> None:
        """Grey in a number of steps.

            Colors  integer, 2 to 256, slider 2 to 256, default 4

        One step of the history: Undo takes it back.
        """

    def Autolevels(self) -> None:
        """Sets the levels of each channel from its histogram.

        One step of the history: Undo takes it back.
        """

    def Autocontrast(self) -> None:
        """Sets common levels from the histogram of all channels.

        One step of the history: Undo takes it back.
        """

    def Gamma(self, Level: float, /) -> None:
        """Gamma curve: below 1 brightens, above 1 darkens.

            Level  double, at least 0.02, slider 0.1 to 5, default 0.8

        One step of the history: Undo takes it back.
        """

    def Blur(self, nVal: int, /) -> None:
        """Mean over a square around each pixel.

            nVal  integer, 1 to 16384, slider 1 to 50, default 3

        One step of the history: Undo takes it back.
        """

    def Average(self, nAverage: int, nVal: int, /) -> None:
        """Mean over a square whose centre has a weight of its own; black for radii below 0.

            nAverage  integer, slider -20 to 20, default 1
            nVal      integer, -8 to 16384, slider 0 to 50, default 2

        One step of the history: Undo takes it back.
        """

    def SmartBlur(self, nVal: int, Level: int, /) -> None:
        """Blurs flat areas and keeps those whose range is above the level.

            nVal   integer, 1 to 16384, slider 1 to 50, default 2
            Level  integer, slider 0 to 255, default 30

        One step of the history: Undo takes it back.
        """

    def GaussianBlur(self, nVal: int, B: int, /) -> None:
        """Blur with weights that fall with the distance, the steeper the larger B.

            nVal  integer, 1 to 16384, slider 1 to 50, default 5
            B     integer, at least 1, slider 1 to 100, default 1

        One step of the history: Undo takes it back.
        """

    def Sharpen(self) -> None:
        """Sharpens against the diagonal neighbours.

        One step of the history: Undo takes it back.
        """

    def SharpenEdge(self, Level: int, /) -> None:
        """Sharpens where the range of the neighbours is at least the level.

            Level  integer, slider 0 to 255, default 30

        One step of the history: Undo takes it back.
        """

    def UserEffect(self, ppArray: Iterable[int], /) -> None:
        """Applies a kernel of 3 x 3 or 5 x 5 weights, column by column.

            ppArray  integers

        One step of the history: Undo takes it back.
        """

    def Laplas(self) -> None:
        """Light edges on black, by four neighbours.

        One step of the history: Undo takes it back.
        """

    def Contour(self) -> None:
        """Light edges on black, by eight neighbours.

        One step of the history: Undo takes it back.
        """

    def Sobel(self, nType: int, /) -> None:
        """Gradient: 0 right less left, 1 left less right, 2 bottom less top, 3 top less bottom.

            nType  integer, slider 0 to 3, default 0

        One step of the history: Undo takes it back.
        """

    def Emboss(self, nValue: int, Direction: int, /) -> None:
        """Grey relief of the difference to a neighbour, in one of eight directions.

            nValue     integer, -10 to 10, slider -10 to 10, default 1
            Direction  integer, slider 0 to 7, default 3

        One step of the history: Undo takes it back.
        """

    def Relief(self, nVal: int, /) -> None:
        """Lights the picture from one side, turned by 45 degrees for each step.

            nVal  integer, slider 0 to 7, default 1

        One step of the history: Undo takes it back.
        """

    def Minimal(self, nVal: int, /) -> None:
        """The least value of each channel within the radius.

            nVal  integer, 0 to 16384, slider 0 to 50, default 2

        One step of the history: Undo takes it back.
        """

    def Maximal(self, nVal: int, /) -> None:
        """The largest value of each channel within the radius.

            nVal  integer, 0 to 16384, slider 0 to 50, default 2

        One step of the history: Undo takes it back.
        """

    def Median(self, nVal: int, /) -> None:
        """The middle value of each channel within the radius.

            nVal  integer, 0 to 16384, slider 0 to 50, default 2

        One step of the history: Undo takes it back.
        """

    def AntiNoise(self, nVal: int, /) -> None:
        """Replaces channels that stand out by their mean within the radius.

            nVal  integer, 1 to 16384, slider 1 to 7, default 1

        One step of the history: Undo takes it back.
        """

    def Diffuse(self, nVal: int, /) -> None:
        """Takes each pixel from a random place within the radius.

            nVal  integer, at least 1, slider 1 to 50, default 3

        One step of the history: Undo takes it back.
        """

    def Mosaic(self, nType: int, nVal: int, /) -> None:
        """Tiles of 2 nVal + 1 pixels: type 0 of their middle's colour, others of their mean.

            nType  integer, slider 0 to 1, default 1
            nVal   integer, at least 1, slider 1 to 100, default 5

        One step of the history: Undo takes it back.
        """

    def Textile(self, Val: int, /) -> None:
        """Draws a weave of short random strokes, black and white, of less than this alpha.

            Val  integer, at least 1, slider 1 to 256, default 40

        One step of the history: Undo takes it back.
        """

    def SoftFocus(self, nVal: int, R1: int, R2: int, X: int, Y: int, /) -> None:
        """Blurs in nVal passes outside of R1 around a point, fully from R1 + R2 on.

            nVal  integer, at least 1, slider 1 to 10, default 3
            R1    integer, at least 1, slider 1 to 2000, default 100
            R2    integer, at least 1, slider 1 to 2000, default 200
            X     integer, slider 0 to 8000, default 400
            Y     integer, slider 0 to 8000, default 300

        One step of the history: Undo takes it back.
        """

    def FocalBW(self, R1: int, R2: int, X: int, Y: int, /) -> None:
        """Keeps colour within R1 around a point and fades to grey over the next R2 pixels.

            R1  integer, slider 0 to 2000, default 100
            R2  integer, slider 0 to 2000, default 200
            X   integer, slider 0 to 8000, default 400
            Y   integer, slider 0 to 8000, default 300

        One step of the history: Undo takes it back.
        """

    def ClearImage(self) -> None:
        """Fills the picture with BitmapBackColor.

        One step of the history: Undo takes it back.
        """

    def SetNewSize(self, Width: int, Height: int, /) -> None:
        """Cuts or enlarges the canvas on the right and at the bottom, without scaling.

            Width   integer, 1 to 65535, slider 1 to 8000, default 800
            Height  integer, 1 to 65535, slider 1 to 8000, default 600

        One step of the history: Undo takes it back.
        """

    def RotateFlip(self, nType: int, /) -> None:
        """Turns clockwise by nType quarter turns; from 4 on, then flips left to right.

            nType  integer, 0 to 7, slider 0 to 7, default 1

        One step of the history: Undo takes it back.
        """

    def ScaleImage(self, ScaleX: float, ScaleY: float, /) -> None:
        """Scales by a factor for each side; below 0.5 by the mean of what a pixel covers.

            ScaleX  double, 1e-05 to 65535, slider 0.05 to 4, default 0.5
            ScaleY  double, 1e-05 to 65535, slider 0.05 to 4, default 0.5

        One step of the history: Undo takes it back.
        """

    def AddSimpleBorder(self, Width: int, Color: int, /) -> None:
        """Adds a border of one colour.

            Width  integer, 1 to 65535, slider 1 to 200, default 16
            Color  color, default 0xFFFFFF

        One step of the history: Undo takes it back.
        """

    def AddGradientBorder(self, Width: int, Color1: int, Color2: int, Style: int, /) -> None:
        """Adds a border of a gradient: Style 0 to the right, 1 down, 2 and 3 along the diagonals.

            Width   integer, 1 to 65535, slider 1 to 200, default 16
            Color1  color, default 0xFFFFFF
            Color2  color, default 0x804000
            Style   integer, slider 0 to 3, default 2

        One step of the history: Undo takes it back.
        """

    @property
    def Zoom(self) -> float:
        """Window pixels for each pixel of the picture.

            double, read only
        """

    def ZoomIn(self) -> None:
        """Zooms in by one tenth, from below 8 only."""

    def ZoomOut(self) -> None:
        """Zooms out by the same step, from above 0.1 only."""

    def ActialSize(self) -> None:
        """Zooms to 1.0 (to 0.1 from below it, to 16.0 from above it)."""

    def ZoomToFit(self) -> None:
        """Zooms so that the picture fits the window."""

    @property
    def AutoResize(self) -> bool:
        """Whether a resize of the window fits the picture anew.

            boolean, default false, get and put
        """
    @AutoResize.setter
    def AutoResize(self, value: bool) -> None: ...

    @property
    def BackColor1(self) -> int:
        """Colour around the picture.

            color, default 0x8B0000, get and put
        """
    @BackColor1.setter
    def BackColor1(self, value: int) -> None: ...

    @property
    def FrameColor(self) -> int:
        """Colour of the frame around the picture.

            color, default 0xD3D3D3, get and put
        """
    @FrameColor.setter
    def FrameColor(self, value: int) -> None: ...

    @property
    def ShowBorder(self) -> bool:
        """Whether a frame is drawn around the picture.

            boolean, default true, get and put
        """
    @ShowBorder.setter
    def ShowBorder(self, value: bool) -> None: ...

    @property
    def ShowDetails(self) -> bool:
        """Whether name and size of the folder's current file are shown.

            boolean, default false, get and put
        """
    @ShowDetails.setter
    def ShowDetails(self, value: bool) -> None: ...

    @property
    def ScrollWindowVisible(self) -> bool:
        """Whether an overview is shown while the picture overflows the window.

            boolean, default false, get and put
        """
    @ScrollWindowVisible.setter
    def ScrollWindowVisible(self, value: bool) -> None: ...

    @property
    def ScrollWindowColor(self) -> int:
        """Colour of the overview, which is half transparent.

            color, default 0x505050, get and put
        """
    @ScrollWindowColor.setter
    def ScrollWindowColor(self, value: int) -> None: ...

    def BeginUpdate(self) -> None:
        """Suspends repainting until EndUpdate."""

    def EndUpdate(self) -> None:
        """Repaints, and goes on repainting; one ends any number of BeginUpdate."""

    @property
    def PaintStatus(self) -> int:
        """Mode of the mouse: 0 none, 1 to 26 a tool; a put resets every tool.

            integer, slider 0 to 26, default 0, get and put
        """
    @PaintStatus.setter
    def PaintStatus(self, value: int) -> None: ...

    def BeginPreview(self) -> None:
        """Opens a preview; any edit, undo, new document or mode ends it again."""

    def Preview(self, Name: Union[str, PathLike[str]], /, *Arguments: Any) -> None:
        """Shows what a command would make of the picture, until the next one is shown.

            Name       string
            Arguments  values
        """

    def EndPreview(self, Apply: bool, /) -> None:
        """Ends the preview; with Apply the command shown last is called.

            Apply  boolean
        """

    @property
    def PenWidth(self) -> int:
        """Width of outlines in pixels.

            integer, 1 to 8, slider 1 to 8, default 1, get and put
        """
    @PenWidth.setter
    def PenWidth(self, value: int) -> None: ...

    @property
    def PenStyle(self) -> int:
        """Outlines: 0 solid, 1 to 4 dashed, others none.

            integer, slider 0 to 4, default 0, get and put
        """
    @PenStyle.setter
    def PenStyle(self, value: int) -> None: ...

    @property
    def PenColor(self) -> int:
        """Colour of outlines; keeps their alpha.

            color, default 0x000000, get and put
        """
    @PenColor.setter
    def PenColor(self, value: int) -> None: ...

    @property
    def PenTransparency(self) -> int:
        """Alpha of outlines: 0 invisible, 255 opaque.

            integer, 0 to 255, slider 0 to 255, default 255, get and put
        """
    @PenTransparency.setter
    def PenTransparency(self, value: int) -> None: ...

    @property
    def SmoothMode(self) -> int:
        """1: lines and shapes are smooth; others: their pixels are all or none.

            integer, slider 0 to 2, default 0, get and put
        """
    @SmoothMode.setter
    def SmoothMode(self, value: int) -> None: ...

    @property
    def FontIndex(self) -> int:
        """Family of texts by its number, below FontCount.

            integer, at least 0, get and put
        """
    @FontIndex.setter
    def FontIndex(self, value: int) -> None: ...

    @property
    def FontStyleItalic(self) -> bool:
        """Whether texts are italic.

            boolean, default false, get and put
        """
    @FontStyleItalic.setter
    def FontStyleItalic(self, value: bool) -> None: ...

    @property
    def FontStyleBold(self) -> bool:
        """Whether texts are bold.

            boolean, default false, get and put
        """
    @FontStyleBold.setter
    def FontStyleBold(self, value: bool) -> None: ...

    @property
    def FontStyleUnderline(self) -> bool:
        """Whether texts are underlined.

            boolean, default false, get and put
        """
    @FontStyleUnderline.setter
    def FontStyleUnderline(self, value: bool) -> None: ...

    @property
    def FontStyleStrikeout(self) -> bool:
        """Whether texts are struck out.

            boolean, default false, get and put
        """
    @FontStyleStrikeout.setter
    def FontStyleStrikeout(self, value: bool) -> None: ...

    @property
    def FontSize(self) -> int:
        """Height of texts in pixels.

            integer, 6 to 255, slider 6 to 255, default 16, get and put
        """
    @FontSize.setter
    def FontSize(self, value: int) -> None: ...

    @property
    def BrushStyle(self) -> int:
        """Fillings: 0 solid, 1 gradient, 2 hatch, 3 texture, from 4 on none.

            integer, at least 0, slider 0 to 3, default 0, get and put
        """
    @BrushStyle.setter
    def BrushStyle(self, value: int) -> None: ...

    @property
    def BrushHatchStyle(self) -> int:
        """Pattern of a hatch.

            integer, 0 to 52, slider 0 to 52, default 0, get and put
        """
    @BrushHatchStyle.setter
    def BrushHatchStyle(self, value: int) -> None: ...

    @property
    def BrushTextureStyle(self) -> int:
        """Tiles of a texture: 0 alike, 1 every other one flipped in x, 2 in y, 3 in both.

            integer, 0 to 3, slider 0 to 3, default 0, get and put
        """
    @BrushTextureStyle.setter
    def BrushTextureStyle(self, value: int) -> None: ...

    @property
    def BrushGradientStyle(self) -> int:
        """Gradients: 0 to the right, 1 down, 2 and 3 along the diagonals.

            integer, 0 to 3, slider 0 to 3, default 0, get and put
        """
    @BrushGradientStyle.setter
    def BrushGradientStyle(self, value: int) -> None: ...

    @property
    def BrushTransparency(self) -> int:
        """Alpha of fillings: 0 invisible, 255 opaque.

            integer, 0 to 255, slider 0 to 255, default 255, get and put
        """
    @BrushTransparency.setter
    def BrushTransparency(self, value: int) -> None: ...

    @property
    def TextureFileName(self) -> str:
        """Picture file of the texture; one that can't be read changes nothing.

            string, get and put
        """
    @TextureFileName.setter
    def TextureFileName(self, value: Union[str, PathLike[str]]) -> None: ...

    @property
    def SprayRadius(self) -> int:
        """Radius of the spray in pixels.

            integer, 8 to 50, slider 8 to 50, default 20, get and put
        """
    @SprayRadius.setter
    def SprayRadius(self, value: int) -> None: ...

    @property
    def ToolBrushSize(self) -> int:
        """Size of the brush.

            integer, 1 to 11, slider 1 to 11, default 5, get and put
        """
    @ToolBrushSize.setter
    def ToolBrushSize(self, value: int) -> None: ...

    @property
    def ToolBrushStyle(self) -> int:
        """Tip of the brush.

            integer, 0 to 5, slider 0 to 5, default 0, get and put
        """
    @ToolBrushStyle.setter
    def ToolBrushStyle(self, value: int) -> None: ...

    @property
    def EraserSize(self) -> int:
        """Size of the eraser.

            integer, 1 to 11, slider 1 to 11, default 5, get and put
        """
    @EraserSize.setter
    def EraserSize(self, value: int) -> None: ...

    @property
    def ImageStyle(self) -> int:
        """How a picture is stamped into the picture.

            integer, 0 to 6, slider 0 to 6, default 0, get and put
        """
    @ImageStyle.setter
    def ImageStyle(self, value: int) -> None: ...

    @property
    def ImageTransparency1(self) -> int:
        """First alpha of a stamped picture.

            integer, 0 to 255, slider 0 to 255, default 255, get and put
        """
    @ImageTransparency1.setter
    def ImageTransparency1(self, value: int) -> None: ...

    @property
    def ImageTransparency2(self) -> int:
        """Second alpha of a stamped picture.

            integer, 0 to 255, slider 0 to 255, default 255, get and put
        """
    @ImageTransparency2.setter
    def ImageTransparency2(self, value: int) -> None: ...

    @property
    def ImageMaskColor(self) -> int:
        """Colour that a stamped picture leaves out while UseImageMaskColor is on.

            color, default 0xFFFFFF, get and put
        """
    @ImageMaskColor.setter
    def ImageMaskColor(self, value: int) -> None: ...

    @property
    def UseImageMaskColor(self) -> bool:
        """Whether ImageMaskColor is left out.

            boolean, default false, get and put
        """
    @UseImageMaskColor.setter
    def UseImageMaskColor(self, value: bool) -> None: ...

    @property
    def BrushColor1(self) -> int:
        """Colour of fillings, start of a gradient, ground of a hatch.

            color, default 0xFFFFFF, get and put
        """
    @BrushColor1.setter
    def BrushColor1(self, value: int) -> None: ...

    @property
    def BrushColor2(self) -> int:
        """End of a gradient, lines of a hatch.

            color, default 0x000000, get and put
        """
    @BrushColor2.setter
    def BrushColor2(self, value: int) -> None: ...

    @property
    def FontCount(self) -> int:
        """How many families of fonts the machine has.

            integer, read only
        """

    def FontName(self, Index: int, /) -> str:
        """Name of a family; empty if there is none of this number.

            Index  integer, at least 0
        """

    def SetupFontByName(self, Name: Union[str, PathLike[str]], /) -> None:
        """Chooses a family by its name; nothing if there is none.

            Name  string
        """

    def BeginMacros(self) -> None:
        """Starts a macro with all drawing settings, and records what follows."""

    def EndMacros(self) -> None:
        """Ends the recording; the macro stays."""

    @property
    def Recording(self) -> bool:
        """Whether a macro is being recorded.

            boolean, read only
        """

    def SaveMacros(self, Path: Union[str, PathLike[str]], /) -> bool:
        """Saves the macro; false if it has no steps or can't be written.

            Path  string
        """

    def LoadMacros(self, Path: Union[str, PathLike[str]], /) -> bool:
        """Loads a macro; false, and it is empty, if that fails.

            Path  string
        """

    def PlayMacros(self) -> None:
        """Replays the macro on the picture; drawing settings are afterwards as before."""
