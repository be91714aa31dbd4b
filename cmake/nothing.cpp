// What is made of whole libraries alone needs a source all the same.
