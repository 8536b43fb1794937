"""A second, small expansion of structures into single objects, to hold `quillmark-a2l prepare` to.

It reads a description into a tree, makes the list of objects that its instances stand for, and can
read the same list out of a description that has been prepared. It is slow and simple on purpose.
"""
