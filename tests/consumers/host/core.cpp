int answer()
{
    return 42;
}
