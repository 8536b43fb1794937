"""Rules that hold inside every interface block."""

from . import model


def comm_param_of(reader, owner, name, protocol_type):
    """The communication parameters of that protocol, made on first use.

    Only a module has some: a block in a signal, group or memory segment gets parameters that
    nobody looks at.
    """
    existing = owner.comm_params if isinstance(owner, model.Module) else []
    for comm_param in existing:
        if comm_param.name == name:
            return comm_param
    comm_param = model.CommParam(name, protocol_type)
    comm_param.station.need_protocol().encoding = reader.module_byte_order
    existing.append(comm_param)
    return comm_param


def close_if_data(reader):
    """After the /end of an interface block: protocol tables know no IF_DATA, so its text counts."""
    reader.next()
    if reader.word != "IF_DATA" and reader.plain_word != b"IF_DATA":
        reader.error(b"Keyword 'IF_DATA' expected after /end")


def unknown_part(reader, is_block):
    """A block that nobody knows is skipped whole, a word is an error."""
    if is_block:
        reader.skip_block()
    else:
        reader.unexpected()


def read_words(reader, block, parameter_counts):
    """Reads a block of words that are all dropped, each with as many parameters as told."""
    for is_block, word in reader.parts(block):
        if not is_block and word in parameter_counts:
            reader.drop(parameter_counts[word])
        else:
            unknown_part(reader, is_block)
