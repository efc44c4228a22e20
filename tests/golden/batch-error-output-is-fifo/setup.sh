mkfifo label-2.ai
