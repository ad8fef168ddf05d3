# One reset pulse on the selected board.
board set reset on
board set reset off
