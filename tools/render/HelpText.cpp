#include "CommandLine.h"

namespace cv::render
{
juce::String CommandLine::getHelp()
{
    return R"(Renders an audio file through a VST3 plug-in.

  varlo-render INPUT -o OUTPUT [options]
  varlo-render INPUT... -o FOLDER [options]
  varlo-render INPUT --editor-png FILE [-o OUTPUT] [options]
  varlo-render --save-state FILE [options]
  varlo-render --list [--json] [--plugin PATH]

INPUT is a WAV, AIFF or FLAC file, mono or stereo; OUTPUT ends in .wav or .flac. In an existing
FOLDER each result is a .wav with its input's name.

  -o OUTPUT             where the result goes; an existing file is replaced at the end
  --plugin PATH         the VST3 bundle (default: Varlo.vst3 beside this program, in the lib/vst3 beside
                        its folder, in ~/.vst3, /usr/local/lib/vst3 or /usr/lib/vst3)
  --load-state FILE     starts from a state that --save-state has written
  --preset FILE         starts from a preset file, .cvpreset; after --load-state where both are given
  --set NAME=VALUE      a parameter's value as the plug-in shows it: Delay=375, "Feedback=60 %"
  --automate NAME=SECONDS:VALUE,SECONDS:VALUE...
                        straight lines between these points, heard in steps of one block
  --save-state FILE     writes the plug-in's state, as projects keep it, at the end
  --tail SECONDS        how much is rendered after the input's end, 0 to 3600 (default: 5)
  --block N             samples per block, 1 to 65536 (default: 512)
  --rate HZ             the rate to render at, 8000 to 384000 (default: the input's)
  --editor-png FILE     plays INPUT with the plug-in's editor on the screen, as fast as it sounds, and
                        writes what the editor shows at the end, as a .png; needs an X display and
                        --block of up to 4096
  --editor-size WxH     the editor's size in pixels; the plug-in may take the nearest that it allows
  --mono                mixes a stereo input down and renders mono
  --bits 16|24|32f      the output's sample format (default: 24; 32f is for WAV)
  --list                renders nothing: prints the plug-in's parameters with ranges and defaults
  --json                with --list: the same for programs
  --check-display       renders nothing: ends with 0 if --editor-png has a display to open, else with 1
  --quiet               prints nothing but errors and warnings
  --help, --version

Exit codes: 0 done, 1 failed, 2 command line not understood, 130 interrupted.
)";
}
} // namespace cv::render
