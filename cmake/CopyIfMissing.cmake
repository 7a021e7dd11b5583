# Copies FROM to TO where TO does not exist.
if(NOT EXISTS "${TO}")
    configure_file("${FROM}" "${TO}" COPYONLY)
endif()
