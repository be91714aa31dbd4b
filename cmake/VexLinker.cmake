# The quickest linker that is installed, where VEX_QUICK_LINKER says so: what is
# installed and packaged is linked by the system's.
option(VEX_QUICK_LINKER "Link with mold or lld when one of them is installed" OFF)
if(VEX_QUICK_LINKER)
  foreach(linker mold lld)
    find_program(VEX_LD_${linker} ld.${linker})
    if(VEX_LD_${linker})
      add_link_options(-fuse-ld=${linker})
      break()
    endif()
  endforeach()
endif()
