mkdir home/folder.eps
