# Makes the headers' comments known to Doxygen: the first one is the file's, one at the end of a line
# belongs to what stands before it.
1s|^// |/// \\file\n/// |
s|^\( *\)// |\1/// |
s|\([;,}]\)  *// |\1 ///< |
