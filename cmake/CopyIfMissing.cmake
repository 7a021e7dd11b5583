# Copies FROM to TO if TO does not exist.
if(NOT EXISTS "${TO}")
    configure_file("${FROM}" "${TO}" COPYONLY)
endif()
