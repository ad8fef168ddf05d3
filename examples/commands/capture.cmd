# Two captures into the working directory; a waveform viewer opens the files.

    # Blanks before a comment do no harm. This one does not wait for the trigger:
ksscope capture immediate.vcd 100E6 immediate=1

# This one waits for it, which takes a second on a simulated board:
ksscope capture triggered.vcd 25E6
