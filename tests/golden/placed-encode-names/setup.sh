# The unencoded 8-bit name, where a program that did not encode it would find a 10-point box.
printf '%s\r' '%!PS-Adobe-3.0 EPSF-3.0' '%%HiResBoundingBox: 0 0 10 10' '%%EOF' > "$(printf 'home/Art/Gr\374\337e.eps')"
