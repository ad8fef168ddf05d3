# Reads all that the selected board tells of itself and changes nothing.

board list
board get mode
board get force_bit

# All channels: supplies, then the temperature.
board monitor get 0
