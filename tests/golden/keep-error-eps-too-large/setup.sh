mkdir -p home && echo "%%HiResBoundingBox: 0 0 1 1" > home/big.eps && truncate -s 268435457 home/big.eps
