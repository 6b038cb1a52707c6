"""PDF files written anew so that they show the same: the document as values, what may be said otherwise in it, and a
serializer that keeps to the syntax it is told, where libraries would bring everything into their own."""
