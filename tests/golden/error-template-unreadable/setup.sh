# A folder where the template should be: it opens, but cannot be read.
mkdir doc.ai
