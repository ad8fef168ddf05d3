# Drives the selected board through its modes and leaves it as the panel brings it up:
# mode "Jtag only", clock on, one reset pulse.

board set mode 'Master Serial'
board get mode
board set mode 'Master SPI'
board get mode
board set mode 'Jtag only'
board get mode

# The force bit on and off, read back each time.
board set force_bit on
board get force_bit
board set force_bit off
board get force_bit

board set jtag_clock on
board set reset on
board set reset off
