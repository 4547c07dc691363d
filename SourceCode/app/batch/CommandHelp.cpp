#include "app/batch/CommandLine.h"

namespace {

const char* const kHelp = R"(tornvale-batch [common options] COMMAND [options] FILE

Programs of a machining centre without a window: FILE "-" is standard input, results
are UTF-8. Values may be given as --ucs=-1,0,5 or --ucs -1,0,5.

Common options
  --data DIR       the installation folder (default: folder of this program)
  --machine FILE   machine file (default: Config/UsedConfig of data.ini)
  --tools FILE     tool library (default: toollib.json of the installation folder)
  -o FILE          write the result there (default: standard output); the file is only
                   replaced when the new one is complete
  --quiet          no progress on standard error
  --help, --version

Without --wcs a command works in the machine's first work coordinate system, without
--chain on the first chain of that system.

convert PROGRAM    one ISO program to an object with "WorkCode", "LeadIn", "IsoCode", "LeadOut"
  --wcs NAME             work coordinate system
  --chain TEXT           kinematic chain, such as "X->Z->C->A;Y"
  --tool INDEX           tool of the library by its index (default: no kinematic transform)
  --ucs X,Y,Z            user coordinate, mm
  --translation X,Y,Z    placement, mm
  --offset U,V,W         offset in the work plane, mm
  --mirror DEG           mirror angle, whole degrees
  --shift MM             extra tool length
  --previous-fifth DEG   axis 5 at the end of the program before
  --section NAME         that text alone

transform CODE     text form of the kinematic transform
  --wcs, --chain, --tool, --ucs as above (without --tool no coordinate changes)
  --extra-length MM      added to the tool's length
  --mode 0|1             0 to the machine (default), 1 back to the tool tip

retime CODE        emitted code to one line per interpolation period
  --chain TEXT
  --factor F             of the feed (default 1.0)
  --dense-point          round sharp corners first

check CODE         axis limits: object with "exceeded" and "axes" of
                   "letter", "lower", "upper", "min", "max"
  --chain TEXT

audit CODE         what a re-timed program asks of the machine, measured from its own lines:
                   object with "lines", "seconds" and "axes" of "letter", "maxVelocity",
                   "velocityLimit", "maxAcceleration", "accelerationLimit", "maxJerk", "jerkLimit"
  --chain TEXT
                   A velocity or an acceleration over its limit is a violation, beyond what the
                   three decimals of the text can add (0.001/p per second and 0.002/p^2, p being
                   the period). Jerk is shown but not judged: the planner does not limit it. A
                   limit that is no positive number is not judged either. A tool change is
                   driven by the machine: the axes rest in front of it and begin anew behind it.

items PROJECT      opens a project and generates all of its items: object with "items" of "group",
                   "name", "type", "chain", "checked", "inLimits", "Time" (s), "WorkCode",
                   "LeadIn", "IsoCode", "LeadOut"

generate PROJECT   the NC program of a project through the post-processor of data.ini; lines,
                   seconds and output file go to standard error
  --pattern NAME         pattern of the post-processor (default: its first)

simulate PROJECT|CODE
                   plays the program on the machine line by line with the collision pass:
                   object with "lines", "seconds" and "collisions" of "line", "first", "second".
                   Of a project all groups are played, with its tools, work pieces and fixtures;
                   for code the tools of the library are installed (M6 T3 mounts tool 3)
  --stop-at-first        end at the first collision

picture PROJECT|CODE
                   draws the machine with the path of the tool, or with the paths of all items
                   of a project, to a PNG
  --line N               the machine stands behind this line (default: the last)
  --size WxH             points, 16 to 8192 each (default 1280x800)
  --camera FILE          view as the window saves it (default: camera.txt, otherwise all)
  --wcs NAME             work coordinate system whose table the path of code is drawn on

Exit status
  0  done
  1  done, and something is wrong with the program: refused, without code, over a limit,
     in collision
  2  wrong call; also a result that cannot be written
  3  the input cannot be read or does not fit the machine's letters
  4  the machine or the installation cannot be used
Every error is one line on standard error: tornvale-batch: FILE[:LINE]: what is wrong
)";

}  // namespace

QString batchHelp() {
    return QString::fromUtf8(kHelp);
}
