#!/usr/bin/sed -Ef
# Turns the plain comments of LoopLibrary.h into those that Doxygen reads.
1s,^/\*$,/** \\file,
s,^( *)/\*( [^-]|$),\1/**\2,
s,([;0-9]) +/\* ,\1 /**< ,
s/(,) +\/\* /\1 \/**< /
