# Inputs git cannot hold: a named pipe, an empty folder and a link to an endless device.
mkfifo home/Art/pipe.eps
mkdir home/Art/dir.eps
ln -s /dev/zero home/Art/zero.eps
