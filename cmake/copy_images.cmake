# Copies the images of FROM, and not their sources, to TO.
file(GLOB images ${FROM}/*.png)
file(COPY ${images} DESTINATION ${TO})
