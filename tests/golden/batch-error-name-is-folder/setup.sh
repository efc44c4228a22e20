mkdir label-2.ai
