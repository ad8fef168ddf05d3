# Fails unless TAKEN, the pictures of a tour, are the PICTURES of the documents, by name.

file(GLOB taken RELATIVE "${TAKEN}" "${TAKEN}/*.png")
file(GLOB pictures RELATIVE "${PICTURES}" "${PICTURES}/*.png")
list(SORT taken)
list(SORT pictures)
if(taken STREQUAL "" OR NOT taken STREQUAL pictures)
    message(FATAL_ERROR "A tour takes:\n${taken}\nThe documents have:\n${pictures}\n"
        "Run scripts/pictures, and see what has changed.")
endif()
