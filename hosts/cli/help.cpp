// What the program says of itself.
// SPDX-License-Identifier: MIT
#include "commands.h"

namespace cli {

const char* const kMainHelp =
    R"(Pixvane edits pictures from the command line.

Usage
  pixvane edit IN OUT [STEP]...         Load the picture IN, take the steps, save OUT.
  pixvane info IN [--json]              Tell what a picture file holds.
  pixvane play MACRO IN... --out DIR    Replay a macro on many pictures.
  pixvane macro show FILE | record OUT  Show what a macro does, or write one.
  pixvane members [--json|--markdown]   List the members that make the steps.
  pixvane COMMAND --help                Say more about a command.
  pixvane --help | --version

Examples
  pixvane edit photo.jpg better.jpg Autolevels Saturate=130
  pixvane edit scan.tif page.png RotateFlip=1 Gamma=0.8
  pixvane macro record warm.pvm Autolevels Temperature=15
  pixvane play warm.pvm holiday/*.jpg --out warm
  pixvane info photo.jpg --json

Exit status
  0 done    1 a file can't be read or written    2 the command line is wrong
)";

const char* const kEditHelp =
    R"(pixvane edit: load a picture, take steps, save it.

Usage
  pixvane edit IN OUT [STEP]...

  IN     a picture file of any kind that can be decoded
  OUT    ends in .bmp .jpg .jpeg .gif .tif .tiff or .png, which says how it is saved;
         it may be IN itself, and it stays as it is if anything goes wrong
  STEP   Member, or Member=a,b,... with its arguments; 'pixvane members' lists them

Arguments
  integer   130  -5  0xFF              double   0.8  1.5e2
  boolean   true  false  1  0          string   as it stands; a comma in it as \,
  color     #FF8000 (red green blue), or the number 0x0080FF (blue green red)
  integers  the whole list: UserEffect=0,1,0,1,4,1,0,1,0

Steps are taken from left to right. A property is put: JpegQuality=80. Everything is
checked before the picture is loaded: names, arguments, and the range that a member
accepts. What a step gives is printed: GetPixel=10,10.

Examples
  pixvane edit photo.jpg better.jpg Autolevels Saturate=130 JpegQuality=95
  pixvane edit photo.jpg framed.png AddSimpleBorder=40,#FFFFFF
  pixvane edit scan.tif page.png RotateFlip=1 Autocontrast BWLevels=2
)";

const char* const kPlayHelp =
    R"(pixvane play: replay a macro on many pictures.

Usage
  pixvane play MACRO IN... --out DIR [--format F] [--jobs N] [--overwrite]

  MACRO         a macro file, recorded by any host or written by 'pixvane macro record'
  IN...         picture files of any kind that can be decoded
  --out DIR     the folder for the results; it is made if it is not there
  --format F    bmp jpg gif tif or png for all results; otherwise each is what its
                source is, and a kind that can't be written becomes png
  --jobs N      how many pictures are worked on at a time, 1 to 64; otherwise as many
                as there are processors
  --overwrite   results may replace files that are there already

A result has its source's name. Two sources with results of one name are refused before
anything is done, and so is a result that would replace a source. Every picture starts
with the same random numbers, so results depend on nothing but the macro and the picture.

A picture that fails is told in one line, and the others go on. Ctrl-C ends the run when
the pictures in work are finished: every file that is there is whole.

Exit status
  0 done    1 some pictures failed    2 the command line is wrong    130 interrupted

Examples
  pixvane play warm.pvm photo.jpg --out results
  pixvane play web.pvm *.tif --out web --format jpg --overwrite
)";

const char* const kMacroHelp =
    R"(pixvane macro: show what a macro does, or write one.

Usage
  pixvane macro show FILE [--json]
  pixvane macro record OUT [STEP]...

  show     prints every step: its number, its code, where its arguments begin in the
           stream, and the member with its arguments; --json as a JSON array
  record   writes a macro of these steps without a picture; STEP is what it is for
           'pixvane edit'. The macro starts with the 27 settings for drawing that
           every macro starts with, and holds 255 steps at most.

Examples
  pixvane macro record frame.pvm Autolevels AddSimpleBorder=24,#FFFFFF
  pixvane macro show frame.pvm
)";

const char* const kInfoHelp =
    R"(pixvane info: tell what a picture file holds.

Usage
  pixvane info IN [--json]

  --json   as one JSON object

Luminance is that of the first frame: its darkest and brightest values that occur, and
the mean of all pixels, from 0 (black) to 255 (white).
)";

const char* const kMembersHelp =
    R"(pixvane members: list the members of the control.

Usage
  pixvane members [--json|--markdown]

  --json       everything that the library tells of them, as a JSON array
  --markdown   as a reference page

Commands and methods, and properties that can be put, are steps for 'pixvane edit'.
)";

}  // namespace cli
